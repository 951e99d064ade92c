#pragma once
// The list of the lesson's new words beside the read-text and TV-play tasks. A click on a word
// says it (on a player of the panel's own, so a single syllable never disturbs the shared one)
// and marks it in the text of the task, where its row belongs when the word occurs twice.

#include "core/app_form.h"

namespace vt {

class MMControl;

class WordsPanel final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "WordsPanel";
    explicit WordsPanel(Runtime& rt);

    void Form_Load() override;
    void Form_Deactivate() override;

    ListView* ListView1 = nullptr;
    MMControl* MMControl1 = nullptr;

private:
    void ListView1_ItemClick(int row);
    void markInText(int row);
};

} // namespace vt
