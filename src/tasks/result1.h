#pragma once
// Result1, "Kyes and Results": the list below the blank-filling task that shows, once the learner
// is done, every blank with its right character and the verdict on the answer. Clicking a row
// marks that blank in the task's text and says its character.

#include "core/app_form.h"
#include "core/app_state.h"
#include "platform/list_view.h"

namespace vt {

class Result1 final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Result1";

    explicit Result1(Runtime& rt);

    // One row for each blank: its number, its character and the verdict.
    void FillResultList(const Array1<Blank>& blanks);
    // Empties the list.
    void ClearResults();

    ListView* ListView1 = nullptr;
    // For each blank (from 1), the row of its character in the character table, 0 for none.
    Array1<int16_t> ResultChars;

private:
    void ListView1_ItemClick(int row);
};

} // namespace vt
