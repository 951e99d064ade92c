#pragma once
// The dictionary: the learner's companion above every task and assistant. It searches the word
// table by Chinese, by an English word or by numeric Pinyin, lists the hits, shows the chosen
// entry with its Pinyin in tone marks, its meaning, its origin and example sentences from the
// lessons, and speaks it. Other forms feed it through Common01.
//
// It is loaded hidden at start and lives for the whole run; the task stacks show and hide it.
// While loaded it provides the look-up on a selection to every text box of the program.
// The rules (which rows a text hits, the entry's text, the sentences) are in dictionary_logic.

#include "core/app_form.h"
#include "search/dictionary_logic.h"

namespace vt {

class MMControl;

class Dictionary final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "Dictionary";
    explicit Dictionary(Runtime& rt);

    void Form_Load() override;
    void Form_Activate() override;
    void Form_Deactivate() override;
    void Form_KeyPress(int& keyAscii) override;

    // Searches text and shows the hits; inLesson keeps a Chinese search to the word itself and
    // its sentences to the word's own lesson (the vocabulary task). The same text twice in a row
    // keeps the list and its selection.
    void Common01(QString& text, bool inLesson);
    // Whether a selection in a text box is looked up here too ("Automatically").
    bool AutomaticLookUp() const;

    ComboBox* Combo1 = nullptr;
    CommandButton* Command1 = nullptr;
    CommandButton* Command2 = nullptr;
    CheckBox* Check2 = nullptr;
    TextArea* Text1 = nullptr;
    ListView* ListView1 = nullptr;
    MMControl* MMControl1 = nullptr;

    // The state of the last search.
    QString LastSearch;
    bool HasResults = false;
    bool Deactivated = true;
    int LocateStart = 1;
    bool InLessonOnly = false;
    int EntryTextLength = 0;
    // The example sentences of each row once shown ("0" for none, empty until computed).
    Array1<QString> Examples;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* e) override;

private:
    void Command1_Click();
    void Command2_Click();
    void ListView1_ItemClick(int row);
    void speakRow(int row);
    void fillList(const std::vector<int>& hits);
    void focusSearchBox();

    WordSearchIndex index_;
    int shownRow_ = 0; // the row whose entry Text1 shows, 0 for none
};

} // namespace vt
