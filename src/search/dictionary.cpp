#include "search/dictionary.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "search/selection_lookup.h"
#include "search/zoom.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QLineEdit>

namespace vt {

namespace {

const QString kSorry = QStringLiteral("Sorry 对不起.");
const QString kSearchPrompt = QStringLiteral("Search  搜索");

constexpr int kWidth = 12000;
constexpr int kHeight = 3450;
constexpr int kListWidth = 7500;

enum Column { Index = 0, Chinese = 1, English = 2, Pinyin = 3, OriginKind = 4, OriginNumber = 5 };

// The search box selects its whole text when it takes the focus and on a double click, so that
// typing replaces it; the click that brought the focus does not undo that.
class SelectAllOnFocus final : public QObject {
public:
    SelectAllOnFocus(QComboBox* box, QLineEdit* edit) : QObject(edit), box_(box), edit_(edit) {
        edit->installEventFilter(this);
        // After the box's own handling of the focus, which may place the caret.
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            if (now != box_ && now != edit_) return;
            edit_->selectAll();
            justFocused_ = true;
        });
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseButtonRelease:
            if (justFocused_ && !edit_->hasSelectedText()) edit_->selectAll();
            justFocused_ = false;
            break;
        case QEvent::MouseButtonDblClick:
            edit_->selectAll();
            return true;
        case QEvent::KeyPress:
            justFocused_ = false;
            break;
        default:
            break;
        }
        return false;
    }

private:
    QComboBox* box_;
    QLineEdit* edit_;
    bool justFocused_ = false;
};

} // namespace

Dictionary::Dictionary(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Dictionary  词典"));
    Move(0, 0, kWidth, kHeight);
    KeyPreview = true;

    AddComboBox(NAMED(Combo1), {120, 90, 3900, 360}, [this] { Command1_Click(); });
    Combo1->setEditable(true);
    Combo1->setInsertPolicy(QComboBox::NoInsert);
    Combo1->setEditText(kSearchPrompt);
    Combo1->setToolTip(QStringLiteral("Input a few Chinese characters or PinYins (such as ai4, "
                                      "guo2, dian4 etc.) or an English word here."));
    new SelectAllOnFocus(Combo1, Combo1->lineEdit());
    AddButton(NAMED(Command1), {4140, 90, 1200, 360}, QStringLiteral("Search"),
              [this] { Command1_Click(); });
    AddButton(NAMED(Command2), {5460, 90, 1200, 360}, QStringLiteral("Locate"), [this] {
        Command2_Click();
    })->setEnabled(false);
    AddCheckBox(NAMED(Check2), {6840, 90, 1800, 360}, QStringLiteral("Automatically"));
    Check2->setToolTip(
        QStringLiteral(" Automatically look up the text that is selected by the cursor."));
    Check2->setChecked(true);

    const int listTop = 540;
    const int listHeight = std::max(600, ScaleHeight() - listTop - 90);
    AddList(NAMED(ListView1), {120, listTop, kListWidth, listHeight},
            {{QStringLiteral("Index  序号"), 1150},
             {QStringLiteral("Chinese  汉语"), 1500},
             {QStringLiteral("English  英语"), 2400},
             {QStringLiteral("Pinyin  拼音"), 1650},
             {QStringLiteral("Origin1"), 750},
             {QStringLiteral("Origin2"), 750}},
            [this](int row) { ListView1_ItemClick(row); });
    ListView1->installEventFilter(this);
    AddTextArea(NAMED(Text1), {kListWidth + 240, listTop, kWidth - kListWidth - 420, listHeight},
                QStringLiteral("You can input a Chinese vocabulary, an Engish word or a Pinyin, "
                               "\r\nsuch as wo3, in the search box.\r\n"))
        ->SetLocked(true);

    if (rt.sound) {
        MMControl1 = rt.sound->NewControl(this, QStringLiteral("MMControl1"));
        SetUpWavePlayer(MMControl1, true);
        connect(MMControl1, &MMControl::Done, this, [this](int code) {
            if (code == MMControl::NotifySuccessful)
                MMControl1->SetCommand(QStringLiteral("Close"));
        });
    }
}

bool Dictionary::eventFilter(QObject* watched, QEvent* event) {
    // Walking the list with the keys shows each row's entry, as a click does.
    if (watched == ListView1 && event->type() == QEvent::KeyRelease) {
        const int row = ListView1->SelectedRow();
        if (row > 0 && row != shownRow_) ListView1_ItemClick(row);
    }
    return AppForm::eventFilter(watched, event);
}

void Dictionary::Form_Load() {
    // Every text box of every form looks its selection up through here while the dictionary
    // stands, which is the whole run.
    Provide(rt.SelectionStarts, [this](SelectableText&) { SelectionStarts(rt); });
    Provide(rt.SelectionMade,
            [this](SelectableText& box, int x, int y) { SelectionMade(rt, box, x, y); });
}

void Dictionary::Form_Activate() {
    Deactivated = false;
}

void Dictionary::Form_Deactivate() {
    Deactivated = true;
    if (MMControl1) MMControl1->SetCommand(QStringLiteral("Close"));
}

void Dictionary::Form_KeyPress(int& keyAscii) {
    if (keyAscii == 27) {
        keyAscii = 0;
        Combo1->setEditText(QString());
        focusSearchBox();
    } else if (keyAscii == 13) {
        keyAscii = 0;
        Command1_Click();
    }
}

bool Dictionary::AutomaticLookUp() const {
    return Check2->isChecked();
}

void Dictionary::focusSearchBox() {
    if (Visible() && Combo1->isEnabled()) Combo1->setFocus(Qt::OtherFocusReason);
}

void Dictionary::Command1_Click() {
    QString text = Trim(Combo1->currentText());
    Common01(text, false);
    focusSearchBox();
}

void Dictionary::Common01(QString& text, bool inLesson) {
    Combo1->setEditText(text);
    const QString box = Combo1->currentText();
    if (box == kSorry || text.isEmpty() || text == LastSearch || box == kSearchPrompt) {
        if (!Deactivated) focusSearchBox();
        return;
    }
    ListView1->Clear();
    shownRow_ = 0;
    Text1->SetSelStart(0);
    LocateStart = static_cast<int>(box.size()) + 1;
    InLessonOnly = inLesson;

    const std::vector<int> hits = index_.Find(rt.app, text, inLesson);
    Text1->SetText(QString());
    EntryTextLength = 0;
    if (hits.empty()) {
        HasResults = false;
        Command2->setEnabled(false);
        Combo1->setEditText(kSorry);
        LastSearch.clear();
        Examples.ReDim(0, false);
        return;
    }

    HasResults = true;
    Command2->setEnabled(true);
    if (Combo1->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive) < 0)
        Combo1->addItem(text);
    Combo1->setEditText(text);
    LastSearch = text;
    Examples.ReDim(static_cast<int>(hits.size()), false);
    fillList(hits);

    int chosen = 0;
    for (int row = 1; row <= ListView1->Count() && chosen == 0; ++row) {
        if (rt.app.VocabularyTaskOpen
                ? ListView1->Text(row, OriginNumber) == QString::number(rt.app.OpenLesson)
                : ListView1->Text(row, Chinese) == text)
            chosen = row;
    }
    if (chosen > 0) {
        ListView1->SelectRow(chosen);
        ListView1_ItemClick(chosen);
    }
}

void Dictionary::showEvent(QShowEvent* e) {
    AppForm::showEvent(e);
    // The vocabulary task opens after the last search: the meanings go out of sight as it
    // brings the dictionary up, and come back with the next task.
    ListView1->setColumnHidden(English, rt.app.VocabularyTaskOpen);
}

void Dictionary::fillList(const std::vector<int>& hits) {
    std::vector<QStringList> rows;
    rows.reserve(hits.size());
    qsizetype longestChinese = 0, longestPinyin = 0;
    QString widestChinese, widestPinyin;
    for (size_t k = 0; k < hits.size(); ++k) {
        rows.push_back(HitCells(rt.app, hits[k], static_cast<int>(k) + 1));
        const QStringList& cells = rows.back();
        if (cells[Chinese].size() > longestChinese) {
            longestChinese = cells[Chinese].size();
            widestChinese = cells[Chinese];
        }
        if (cells[Pinyin].size() > longestPinyin) {
            longestPinyin = cells[Pinyin].size();
            widestPinyin = cells[Pinyin];
        }
    }
    ListView1->SetRows(std::move(rows));
    // In the vocabulary task the meaning is the answer: its column stays out of sight there.
    ListView1->setColumnHidden(English, rt.app.VocabularyTaskOpen);
    // The Chinese and the Pinyin show in full: their columns grow to the longest hit, measured
    // once rather than cell by cell.
    const QFontMetrics metrics(ListView1->font());
    const int padding = 16;
    ListView1->setColumnWidth(Chinese,
                              std::max(ListView1->columnWidth(Chinese),
                                       metrics.horizontalAdvance(widestChinese) + padding));
    ListView1->setColumnWidth(Pinyin, std::max(ListView1->columnWidth(Pinyin),
                                               metrics.horizontalAdvance(widestPinyin) + padding));
}

void Dictionary::ListView1_ItemClick(int row) {
    if (!HasResults || row < 1 || row > ListView1->Count()) return;
    shownRow_ = row;
    speakRow(row);

    EntryParts parts;
    parts.chinese = ListView1->Text(row, Chinese);
    parts.meaning = ListView1->Text(row, English);
    parts.pinyin = ListView1->Text(row, Pinyin);
    parts.originKind = ListView1->Text(row, OriginKind).toInt();
    parts.originNumber = ListView1->Text(row, OriginNumber);

    QString examples;
    if (!rt.app.DictionaryFeedsTask) {
        if (row <= Examples.Count() && Examples[row].isEmpty()) {
            const QString found =
                ExampleSentences(rt.app, parts.chinese, parts.originNumber.toInt(), InLessonOnly);
            Examples[row] = found.isEmpty() ? QStringLiteral("0") : found;
        }
        if (row <= Examples.Count()) examples = Examples[row];
    }
    Text1->SetText(EntryText(parts, rt.app.DictionaryFeedsTask, rt.app.OpenTask, examples));
    EntryTextLength = static_cast<int>(Text1->Text().size());
    LocateStart = static_cast<int>(parts.chinese.size()) + 1;
}

void Dictionary::speakRow(int row) {
    const AppState& app = rt.app;
    if (SharedPlayerPlaying(rt) || app.OpenTask == 3 || app.OpenTask == 6) return;
    if (const Zoom* zoom = rt.forms.Get<Zoom>(); zoom && zoom->Visible()) return;

    const QString pinyin = ListView1->Text(row, Pinyin);
    if (StripPunctuation(ListView1->Text(row, Chinese)).size() > 1) {
        const int kind = ListView1->Text(row, OriginKind).toInt();
        if (kind == 1 || kind == 2 || kind == 4) SpeakPinyin(rt, StripPunctuation(pinyin));
        return;
    }
    const CharSound sound = SoundOfSingleCharacter(pinyin);
    if (sound.syllable.size() < 2 || !MMControl1) return;
    MMControl1->SetCommand(QStringLiteral("Close"));
    MMControl1->SetFileName(SyllableSoundFile(app.AppPath, sound.syllable));
    MMControl1->SetCommand(QStringLiteral("Open"));
    MMControl1->SetCommand(QStringLiteral("Play"));
    ShowToneCurve(rt, sound.tone);
}

void Dictionary::Command2_Click() {
    const int row = ListView1->SelectedRow();
    const QStringList pieces = WordPieces(ListView1->Text(row, Chinese));
    const int restart = static_cast<int>(Combo1->currentText().size()) + 1;
    const int at =
        pieces.isEmpty() ? 0 : LocateNext(Text1->Text(), pieces[0], LocateStart, restart);
    Text1->setFocus(Qt::OtherFocusReason);
    if (at == 0) return;
    Text1->Select(at - 1, static_cast<int>(pieces[0].size()));
    LocateStart = Text1->SelStart() + Text1->SelLength() + 1;
}

} // namespace vt
