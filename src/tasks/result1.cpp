#include "tasks/result1.h"

#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "tasks/blank_filling.h"
#include "tasks/exercise3.h"

namespace vt {

Result1::Result1(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Kyes and Results"));
    Move(0, 0, 9720, 2400);
    AddList(NAMED(ListView1), {0, 0, ScaleWidth(), ScaleHeight()},
            {{QStringLiteral("Index"), 390},
             {QStringLiteral("Chinese"), 1560},
             {QStringLiteral("English"), 7000}},
            [this](int row) { ListView1_ItemClick(row); });
}

void Result1::FillResultList(const Array1<Blank>& blanks) {
    std::vector<QStringList> rows;
    std::vector<QString> characters;
    rows.reserve(static_cast<size_t>(blanks.Count()));
    for (int n = 1; n <= blanks.Count(); ++n) {
        const Blank& b = blanks[n];
        rows.push_back({QString::number(n), b.Character, BlankVerdict(b)});
        characters.push_back(b.Character);
    }
    ResultChars.ReDim(0, false);
    for (int16_t row : CharRowsOf(rt.app, characters))
        ResultChars.Append(row);
    ListView1->SetRows(std::move(rows));
}

void Result1::ClearResults() {
    ListView1->Clear();
    ResultChars.Erase();
}

void Result1::ListView1_ItemClick(int row) {
    Exercise3* exercise = rt.forms.Get<Exercise3>();
    if (!exercise || row < 1 || row > ListView1->Count()) return;
    const int n = static_cast<int>(Val(ListView1->Text(row, 0)));
    exercise->SelectBlank(n);
    if (n >= 1 && n <= ResultChars.Count() && ResultChars[n] >= 1)
        exercise->SayCharacter(ResultChars[n]);
}

} // namespace vt
