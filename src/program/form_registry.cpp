#include "program/form_registry.h"

#include "core/runtime.h"
#include "search/dictionary.h"
#include "search/expressions_related.h"
#include "search/zoom.h"
#include "tasks/exercise3.h"
#include "tasks/find_sentence.h"
#include "tasks/listening_tv.h"
#include "tasks/newwords.h"
#include "tasks/notepad.h"
#include "tasks/question.h"
#include "tasks/result1.h"
#include "tasks/text.h"
#include "tasks/typing.h"
#include "tasks/vocabulary.h"
#include "tasks/words_panel.h"

namespace vt {

void RegisterProgramForms(AppForms& forms) {
    // One line for each form, as it arrives (and its name leaves the list below).
    forms.Register<Notepad>();
    forms.Register<WordsPanel>();
    forms.Register<Newwords>();
    forms.Register<ExpressionsRelated>();
    forms.Register<Typing>();
    forms.Register<Dictionary>();
    forms.Register<Zoom>();
    forms.Register<Exercise3>();
    forms.Register<Result1>();
    forms.Register<FindSentence>();
    forms.Register<Text>();
    forms.Register<Vocabulary>();
    forms.Register<ListeningTV>();
    forms.Register<Question>();
}

const QStringList& FormsStillToBuild() {
    static const QStringList names = {
        // The assistants.
        QStringLiteral("Alphabet1"),
        QStringLiteral("Figure"),
        QStringLiteral("SentencesSingle"),
        QStringLiteral("Spoken"),
        QStringLiteral("Surname"),
        QStringLiteral("Chat"),
        QStringLiteral("WriteCharacter"),
        QStringLiteral("Samples"),
    };
    return names;
}

} // namespace vt
