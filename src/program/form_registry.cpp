#include "program/form_registry.h"

#include "core/runtime.h"
#include "search/dictionary.h"
#include "search/zoom.h"

namespace vt {

void RegisterProgramForms(AppForms& forms) {
    // One line for each form, as it arrives (and its name leaves the list below):
    //     forms.Register<Typing>();
    forms.Register<Dictionary>();
    forms.Register<Zoom>();
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
        QStringLiteral("Exercise3"),
        QStringLiteral("Result1"),
        QStringLiteral("FindSentence"),
        QStringLiteral("Question"),
        QStringLiteral("Newwords"),
        // The dictionary and its panel.
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
