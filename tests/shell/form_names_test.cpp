// Within every form of the program each object name stands once, so that a name finds one
// control, as the learner sees it, and never another.
#include "shell/about.h"
#include "shell/background.h"
#include "shell/begin.h"
#include "shell/begin1.h"
#include "shell/load_data.h"
#include "shell/start_or_not.h"
#include "support/test_env.h"

#include <gtest/gtest.h>
#include <map>

using namespace vt;

namespace {

// The names that stand more than once among the objects of a form: its own, not those of the
// forms standing on it, and not Qt's inner parts.
QString repeatedNames(Form* form) {
    std::map<QString, int> count;
    for (QObject* o : form->findChildren<QObject*>()) {
        const QString name = o->objectName();
        if (FormOf(o) == form && !name.isEmpty() && !name.startsWith(QStringLiteral("qt_")))
            ++count[name];
    }
    QStringList repeated;
    for (const auto& [name, n] : count)
        if (n > 1) repeated << name;
    return repeated.join(u' ');
}

} // namespace

TEST(FormNames, EachNameStandsOnceOnEveryForm) {
    test::TestEnv env;
    AppForms& forms = env.rt->forms;
    forms.Load<StartOrNot>(); // and the desktop behind it
    forms.Load<Begin>();
    forms.Load<LoadData>();
    forms.Load<Begin1>();
    forms.Load<About>();
    for (const QString& name : forms.Registered())
        forms.LoadByName(name);
    ASSERT_GE(forms.All().size(), 6u);
    for (Form* form : forms.All()) {
        EXPECT_EQ(repeatedNames(form).toStdString(), "") << form->objectName().toStdString();
        EXPECT_GT(form->findChildren<QWidget*>().size(), 3) << form->objectName().toStdString();
    }
}
