#include "search/expressions_related.h"

#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "core/word_sound.h"

namespace vt {

ExpressionsRelated::ExpressionsRelated(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Related expressions"));
    Move(0, 0, 9600, 2400);
    AddList(
        NAMED(ListView1), {60, 60, 9390, ScaleHeight() - 120},
        {{"Index", 390}, {"Chinese", 1560}, {"Pinyin", 2200}, {"English", 4800}, {"Pinyin1", 0}},
        [this](int row) { ListView1_ItemClick(row); });
}

void ExpressionsRelated::Clear() {
    ListView1->Clear();
    RowOrigin.clear();
    RowCount = 0;
    HasRows = false;
}

void ExpressionsRelated::show(const std::vector<RelatedRow>& rows) {
    Clear();
    std::vector<QStringList> cells;
    cells.reserve(rows.size());
    for (const RelatedRow& r : rows) {
        cells.push_back(
            {QString::number(cells.size() + 1), r.Chinese, r.Pinyin, r.English, r.Pinyin1});
        RowOrigin.push_back(r.Origin);
    }
    ListView1->SetRows(std::move(cells));
    RowCount = static_cast<int16_t>(rows.size());
    HasRows = RowCount > 0;
}

void ExpressionsRelated::Common02(const QString& text, const QString& meaning) {
    show(RelatedByCharacter(rt.app, text, meaning));
}

void ExpressionsRelated::Common03(const QString& text) {
    show(WordsHolding(rt.app, text));
}

void ExpressionsRelated::Common04(const QString& text, const QString& detail, int row,
                                  bool fromLesson, bool withRelated) {
    show(EntryWithRelated(rt.app, text, detail, row, fromLesson, withRelated));
}

void ExpressionsRelated::ListView1_ItemClick(int row) {
    if (!HasRows || row < 1 || row > ListView1->Count()) return;
    // The shared player is busy with a sentence or a speech: the click waits for it.
    if (rt.sound && rt.sound->MMControl1->Mode() == MMControl::ModePlaying) return;
    SayWord(rt, ListView1->Text(row, 1), ListView1->Text(row, 4));
}

void ExpressionsRelated::Form_Click() {
    // In the typing task the learner goes on typing after a look at the list.
    if (rt.app.OpenTask != 2) return;
    if (Form* typing = rt.forms.Find(QStringLiteral("Typing"))) typing->SetFocus();
}

} // namespace vt
