#pragma once
// The list beside a task of the words related to the word being studied: words that share its
// character or ending (Common02), words that hold a text (Common03), or the studied entry itself
// followed by the entries that hold it (Common04). Every call replaces the list. A click on a row
// says that word; a click on the form gives the focus back to the typing task.

#include "core/app_form.h"
#include "search/related_words.h"

#include <vector>

namespace vt {

class ExpressionsRelated final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Expressions_Related";
    explicit ExpressionsRelated(Runtime& rt);

    // Up to 20 words related by character to text; meaning keeps the word itself out.
    void Common02(const QString& text, const QString& meaning);
    // Up to 10 words that hold text.
    void Common03(const QString& text);
    // The caller's entry (row of the lesson's words when fromLesson, else of the dictionary), then
    // with withRelated up to 10 entries of the same table that hold text. detail, when given, is
    // the numeric Pinyin of text itself, which the first row then carries.
    void Common04(const QString& text, const QString& detail, int row, bool fromLesson,
                  bool withRelated);
    // Empties the list; RowCount becomes 0.
    void Clear();

    void Form_Click() override;

    ListView* ListView1 = nullptr;

    // Rows in the list, and the origin of the word of each.
    int16_t RowCount = 0;
    bool HasRows = false;
    std::vector<WordSource> RowOrigin;

private:
    void show(const std::vector<RelatedRow>& rows);
    void ListView1_ItemClick(int row);
};

} // namespace vt
