// Every form that a task stack, an assistant row or a sound owner tag names is in the program
// (registered by its name) or on the list of forms still to build, never both; the list names
// nothing that nobody names; and a registered form loads under the name it is registered with.
#include "core/sound_owners.h"
#include "program/form_registry.h"
#include "shell/form_stacks.h"
#include "support/test_env.h"

#include <gtest/gtest.h>
#include <set>

using namespace vt;

namespace {

// Every form the menus and the sound owner tags name, with where it is named.
std::map<QString, std::string> namedForms() {
    std::map<QString, std::string> named;
    const auto add = [&named](const char* form, const std::string& where) {
        if (form) named.emplace(QString::fromLatin1(form), where);
    };
    for (const TaskStackRow& row : TaskStacks()) {
        const std::string where = "the stack of task " + std::to_string(row.openTask);
        for (const char* form : {row.main, row.mainTv, row.notepad, row.below, kDictionary})
            add(form, where);
    }
    for (const AssistantRow& row : AssistantRows()) {
        const std::string where = std::string("the assistants' row ") + row.button;
        add(row.form, where);
        add(row.beside, where);
    }
    for (const OwnerTagRow& row : kOwnerTags)
        add(row.form, "owner tag " + std::to_string(static_cast<int>(row.tag)));
    return named;
}

} // namespace

TEST(FormRegistry, EveryNamedFormIsRegisteredOrStillToBuild) {
    test::TestEnv env; // registers the program's forms
    const QStringList& toBuild = FormsStillToBuild();
    const auto named = namedForms();
    for (const auto& [form, where] : named) {
        const bool registered = env.rt->forms.IsRegistered(form);
        const bool listed = toBuild.contains(form);
        EXPECT_TRUE(registered || listed)
            << form.toStdString() << " (" << where << ") is neither registered nor still to build";
        EXPECT_FALSE(registered && listed)
            << form.toStdString() << " is registered: take it off the list of forms to build";
    }
    for (const QString& form : toBuild) {
        EXPECT_TRUE(named.count(form)) << form.toStdString() << " is to build but nobody names it";
        EXPECT_EQ(toBuild.count(form), 1) << form.toStdString() << " stands twice on the list";
    }
}

TEST(FormRegistry, EachRegisteredFormLoadsUnderItsName) {
    test::TestEnv env;
    for (const auto& [form, where] : namedForms()) {
        if (!env.rt->forms.IsRegistered(form)) continue;
        Form* f = env.rt->forms.LoadByName(form);
        ASSERT_NE(f, nullptr) << form.toStdString() << " gave up in its load";
        EXPECT_EQ(f->objectName(), form);
        env.rt->forms.Unload(f);
    }
}
