#include "program/form_registry.h"

#include "core/runtime.h"
#include "tasks/exercise3.h"
#include "tasks/result1.h"

namespace vt {

void RegisterProgramForms(AppForms& forms) {
    // One line for each form, as it arrives (and its name leaves the list below).
    forms.Register<Exercise3>();
    forms.Register<Result1>();
}

const QStringList& FormsStillToBuild() {
    static const QStringList names = {
        // The tasks and their panels.
        QStringLiteral("Text"),
        QStringLiteral("ListeningTV"),
        QStringLiteral("Notepad"),
        QStringLiteral("WordsPanel"),
        QStringLiteral("Typing"),
        QStringLiteral("Vocabulary"),
        QStringLiteral("FindSentence"),
        QStringLiteral("Question"),
        QStringLiteral("Newwords"),
        // The dictionary and its panel.
        QStringLiteral("Dictionary"),
        QStringLiteral("Expressions_Related"),
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
