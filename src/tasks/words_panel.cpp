#include "tasks/words_panel.h"

#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "core/word_sound.h"
#include "tasks/word_marking.h"

namespace vt {

WordsPanel::WordsPanel(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("New words"));
    Move(0, 0, 9600, 2400);
    AddList(
        NAMED(ListView1), {60, 60, 9390, ScaleHeight() - 120},
        {{"Index", 390}, {"Chinese", 1560}, {"Pinyin", 2210}, {"English", 4845}, {"Pinyin1", 0}},
        [this](int row) { ListView1_ItemClick(row); });
}

void WordsPanel::Form_Load() {
    if (rt.sound) {
        MMControl1 = rt.sound->NewControl(this, QStringLiteral("MMControl1"));
        SetUpWavePlayer(MMControl1, false);
    }
    const AppState& app = rt.app;
    const int rows = std::min<int>(app.LessonWordRows, app.LessonWords.Count());
    std::vector<QStringList> cells;
    cells.reserve(size_t(std::max(rows, 0)));
    for (int i = 1; i <= rows; ++i) {
        const LessonWord& w = app.LessonWords[i];
        cells.push_back(
            {QString::number(i), w.Chinese, PinyinToMarks(w.Pinyin), w.Meaning, w.Pinyin});
    }
    ListView1->SetRows(std::move(cells));
}

void WordsPanel::Form_Deactivate() {
    if (MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));
}

void WordsPanel::ListView1_ItemClick(int row) {
    if (row < 1 || row > ListView1->Count()) return;
    // A sentence or a speech on the shared player goes first.
    if (rt.sound && rt.sound->MMControl1->Mode() == MMControl::ModePlaying) return;

    const WordSound s =
        PlanWordSound(rt.app.AppPath, ListView1->Text(row, 1), ListView1->Text(row, 4));
    if (s.BySyllables) {
        SpeakPinyin(rt, s.Pinyin);
    } else if (MMControl1) {
        MMControl1->SetCommand(QStringLiteral("Close"));
        MMControl1->SetFileName(s.File);
        MMControl1->SetCommand(QStringLiteral("Open"));
        MMControl1->SetCommand(QStringLiteral("Play"));
        rt.app.CurrentTone = s.Tone;
        ShowToneCurve(rt, s.Tone);
    }
    markInText(row);
}

void WordsPanel::markInText(int row) {
    const QString formName =
        rt.app.OpenLesson > 80 ? QStringLiteral("ListeningTV") : QStringLiteral("Text");
    Form* task = rt.forms.Find(formName);
    if (!task) return;
    auto* text = dynamic_cast<SelectableText*>(task->findChild<QWidget*>(QStringLiteral("Text1")));
    if (!text) return;
    if (const std::optional<TextMark> mark = MarkLessonWord(text->Text(), rt.app.LessonWords, row))
        text->Select(mark->Start, mark->Length);
}

} // namespace vt
