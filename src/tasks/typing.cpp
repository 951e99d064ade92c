#include "tasks/typing.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "platform/timers.h"
#include "search/expressions_related.h"
#include "shell/form_stacks.h"
#include "shell/study.h"

#include <QMouseEvent>

namespace vt {

namespace {

constexpr int kWidth = 9600;
constexpr int kHeight = 4800;
constexpr unsigned kPromptBlue = 0x8B3A1F; // the caption bar's blue, in blue-green-red order
constexpr unsigned kMarkRed = 0x0000C0;
constexpr unsigned kPaper = 0xF1F9FC;
constexpr unsigned kListPaper = 0xE6F4FF;

// A click on a label: the label takes the mouse, so the form's own click does not run too.
class LabelClick final : public QObject {
public:
    LabelClick(QWidget* label, std::function<void()> onClick)
        : QObject(label), onClick_(std::move(onClick)) {
        label->installEventFilter(this);
        label->setCursor(Qt::PointingHandCursor);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress ||
            event->type() == QEvent::MouseButtonDblClick)
            return true;
        if (event->type() != QEvent::MouseButtonRelease) return false;
        const auto* e = static_cast<QMouseEvent*>(event);
        const auto* label = static_cast<QWidget*>(watched);
        if (e->button() == Qt::LeftButton && label->rect().contains(e->position().toPoint()))
            onClick_();
        return true;
    }

private:
    std::function<void()> onClick_;
};

} // namespace

Typing::Typing(Runtime& runtime) : AppForm(runtime, kName) {
    Move(0, 0, kWidth, kHeight);
    SetBackColor(kPaper);
    KeyPreview = true;

    AddLabel(NAMED(Label16), {180, 90, 7800, 360})->SetFontBold(true);
    Label16->SetFontSize(12);
    Label16->hide();
    AddControl(NAMED(Image1), {0, 0, 420, 420})->LoadPicture(QStringLiteral(":/close_neutral.svg"));
    AddControl(NAMED(Image4), {0, 0, 420, 420})->LoadPicture(QStringLiteral(":/close_hover.svg"));
    Image1->PictureName = QStringLiteral("neutral");
    Image4->PictureName = QStringLiteral("hover");
    Image1->hide();
    Image4->hide();
    AddControl(NAMED(Image3), {kWidth - 600, 90, 420, 420});
    Image3->SetPicture(Image1->Picture());
    Image3->PictureName = Image1->PictureName;
    Image3->setCursor(Qt::PointingHandCursor);
    Image3->setToolTip(QStringLiteral("Close"));
    connect(Image3, &ImageBox::Click, this, [this] { Image3_Click(); });
    connect(Image3, &ImageBox::MouseMove, this, [this] { Image3_MouseMove(); });

    AddLabel(NAMED(Label2), {180, 510, 9200, 300},
             "Your task is to type the new words that appear in the text.");
    AddLabel(NAMED(Label20), {180, 810, 9200, 300},
             "To complete this task, your correctness rate must reach 80%")
        ->SetForeColor(kMarkRed);

    // The character to type, and beside it the one picked.
    AddLabel(NAMED(Label1), {300, 1230, 1500, 1500})->SetFontSize(48);
    AddLabel(NAMED(Label4), {2040, 1230, 1500, 1500}, "?")->SetFontSize(48);
    for (Label* big : {Label1, Label4}) {
        big->setAlignment(Qt::AlignCenter);
        big->setFrameStyle(QFrame::Box | QFrame::Plain);
        big->SetBackColor(0xFFFFFF);
        big->hide();
    }
    Label4->SetForeColor(0x808080);
    AddLabel(NAMED(Label3), {300, 2790, 1500, 420})->SetFontSize(15);
    Label3->setAlignment(Qt::AlignCenter);
    Label3->SetForeColor(kPromptBlue);
    AddControl(NAMED(Shape1), {2070, 2880, 210, 210});
    Shape1->BorderColor = 0x404040;
    Shape1->FillColor = kPromptBlue;
    AddLabel(NAMED(Label11), {2340, 2820, 1500, 330});

    // The small input method.
    AddLabel(NAMED(Label7), {3900, 1290, 1800, 330}, "Phonetic symbol:");
    AddLabel(NAMED(Label8), {5640, 1230, 1560, 420})->SetFontSize(12);
    Label8->setFrameStyle(QFrame::Box | QFrame::Plain);
    Label8->SetBackColor(0xFFFFFF);
    Label8->setWordWrap(false);
    AddLabel(NAMED(Label19), {7380, 1290, 900, 330}, "ü = v")->SetForeColor(0x808080);
    AddLabel(NAMED(Label6), {3900, 1860, 5520, 660})->SetForeColor(kPromptBlue);
    Label6->SetFontBold(true);
    AddLabel(NAMED(Label17), {3900, 2640, 1000, 330})
        ->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    AddLabel(NAMED(Label18), {4980, 2640, 1400, 330}, "characters")
        ->setToolTip(QStringLiteral(" characters "));
    Label18->setWordWrap(false);
    // The list runs across the form: nine characters and the paging mark.
    AddLabel(NAMED(Label5), {300, 3330, 9000, 510})->SetFontSize(14);
    Label5->SetBackColor(kListPaper);
    Label5->setWordWrap(false);
    AddLabel(NAMED(Label10), {180, 3990, 9200, 330})->SetFontBold(true);

    new LabelClick(Label11, [this] { Label11_Click(); });
    for (Label* hear : {Label1, Label3, Label4})
        new LabelClick(hear, [this] { Form_Click(); });

    AddTimer(NAMED(Timer1), 400, [this] { Timer1_Tick(); });
    AddTimer(NAMED(Timer2), 200, [this] { Timer2_Tick(); });
    AddTimer(NAMED(Timer5), 500, [this] { Timer5_Tick(); });

    input_ = std::make_unique<InputMethod>(rt.app.CharTable);
}

Typing::~Typing() = default;

void Typing::Form_Load() {
    AppState& app = rt.app;
    drill_ = DrillProgress{};
    blinkCount_ = 0;
    inputEnabled_ = false;
    setPinyinShown(true);

    const int lesson = app.OpenLesson;
    const QString title =
        lesson >= 1 && lesson <= app.TitleList.Count() ? app.TitleList[lesson] : QString();
    Label16->SetCaption(title.isEmpty() ? QStringLiteral("Lesson %1").arg(lesson)
                                        : QStringLiteral("Lesson %1 - %2").arg(lesson).arg(title));

    targets_ = BuildDrill(app);
    drill_.TargetCount = static_cast<int16_t>(std::min(targets_.Count(), 32767));
    if (drill_.TargetCount == 0) {
        rt.MsgBox(QStringLiteral("There is no new Chinese characters in this lesson."),
                  Mb::Information, QStringLiteral("Notice"));
        nothingToDo_ = true;
        leaveFreely_ = true;
        AdvanceStudy(rt);
        Timer2->SetEnabled(true);
    } else {
        // The drill runs in its fixed order from a random place: the place drawn is the one
        // before the first character shown.
        rt.random.Randomize();
        drill_.TargetIndex = static_cast<int16_t>(rt.random.Pick(drill_.TargetCount));
        nextCharacter();
    }

    Label1->show();
    Label4->show();
    Label16->show();
    drill_.CorrectnessRate = 0;
    Label10->SetCaption(QString());
    savedPrompt_ = kFirstPrompt;
    if (!nothingToDo_) leaveFreely_ = !AtStudyPosition(app);
}

void Typing::showEvent(QShowEvent* e) {
    AppForm::showEvent(e);
    // The panel below is loaded after this form: it gets its first list once the stack stands.
    if (inputEnabled_ && hasTarget()) ListWordsHolding(target().Character);
}

void Typing::nextCharacter() {
    if (drill_.Next() && AtStudyPosition(rt.app)) {
        if (drill_.CorrectnessRate < 80) {
            advise(QStringLiteral("Your correctness rate hasn't reached 80%. Do task 2 again, "
                                  "please."),
                   Mb::Information);
        } else {
            AdvanceStudy(rt);
            leaveFreely_ = true;
            if (advise(QStringLiteral("You have finished task 2. Let's go on to do task 3."),
                       Mb::OKCancel | Mb::Information) == Mb::OK) {
                Timer2->SetEnabled(true);
                return;
            }
        }
        drill_.StartNewPass();
        Label10->SetCaption(drill_.ScoreLine());
    }

    const TargetChar& t = target();
    Label17->SetCaption(drill_.ProgressLine());
    Label1->SetCaption(t.Character);
    Label4->SetCaption(QStringLiteral("?"));
    Label3->SetCaption(PinyinToMarks(t.Pinyin));
    Label6->SetCaption(kTypePrompt);
    ListWordsHolding(t.Character);
    inputEnabled_ = true;
    Timer5->SetEnabled(true);
}

void Typing::sayTarget() {
    const QString& pinyin = target().Pinyin;
    if (pinyin.isEmpty()) return; // a character without a syllable has no recording to play
    rt.app.CurrentTone = pinyin.right(1);
    PlayWave(rt, SyllableSoundFile(rt.app.AppPath, TargetSoundSyllable(pinyin)), OwnerTag::None);
}

void Typing::Timer5_Tick() {
    Timer5->SetEnabled(false);
    if (hasTarget()) sayTarget();
}

void Typing::Form_KeyDown(int& keyCode, int) {
    const int code = keyCode;
    keyCode = 0; // every key is the input method's

    // A right answer may be cut short: any key moves on.
    if (Label6->Caption().startsWith(QStringLiteral("Correct")) && Timer1->Enabled()) {
        Timer1->SetEnabled(false);
        nextCharacter();
        blinkCount_ = 0;
        Label6->show();
        return;
    }
    if (!inputEnabled_) return;

    if (code >= 'A' && code <= 'Z')
        typeLetter(QChar(code - 'A' + 'a'));
    else if (code == 8)
        backspace();
    else if (code == 32)
        pick(1);
    else if (code >= '1' && code <= '9')
        pick(code - '0');
    else if (code == 187)
        changePage(true);
    else if (code == 189)
        changePage(false);
    else if (code == 27)
        Image3_Click();
}

void Typing::typeLetter(QChar letter) {
    // Five letters at most: a longer syllable is picked from the list of the first five.
    if (!input_->TypeLetter(letter)) return;
    Label8->SetCaption(u' ' + input_->TypedPinyin());
    showSearch();
}

void Typing::backspace() {
    if (!input_->Backspace()) return;
    Label8->SetCaption(u' ' + input_->TypedPinyin());
    if (!input_->TypedPinyin().isEmpty()) {
        showSearch();
    } else {
        input_->Search(); // no letters, no list
        Label6->SetCaption(kTypePrompt);
        Label5->SetCaption(QString());
    }
}

void Typing::showSearch() {
    input_->Search();
    Label5->SetCaption(input_->PageLine());
    Label6->SetCaption(input_->Prompt(target().Character));
}

void Typing::changePage(bool forward) {
    if (!(forward ? input_->NextPage() : input_->PreviousPage())) return;
    Label5->SetCaption(input_->PageLine());
    Label6->SetCaption(input_->Prompt(target().Character));
}

void Typing::pick(int k) {
    if (Label5->Caption().isEmpty()) return;
    const Candidate* item = input_->PageItem(k);
    if (!item) return;
    const CharEntry& entry = input_->EntryOf(*item);
    const CharReading& reading = input_->ReadingOf(*item);

    rt.app.CurrentTone = reading.ToneKey;
    inputEnabled_ = false;
    Label4->SetCaption(entry.Character);
    // Only the character counts, not the reading it was found by.
    const bool right = Label4->Caption() == Label1->Caption();
    drill_.Record(right);
    if (right) {
        Label6->SetCaption(kRightVerdict);
    } else {
        Label6->SetCaption(kWrongVerdict);
        ListWordsHolding(entry.Character);
    }
    // The learner hears the reading picked.
    PlayWave(rt, SyllableSoundFile(rt.app.AppPath, reading.Plain + reading.ToneSound),
             OwnerTag::None);
    Label10->SetCaption(drill_.ScoreLine());

    input_->Clear();
    Label8->SetCaption(QString());
    Label5->SetCaption(QString());
    Timer1->SetEnabled(true);
}

void Typing::Timer1_Tick() {
    ++blinkCount_;
    if (blinkCount_ < 9) {
        Label6->setHidden(!Label6->isHidden());
        return;
    }
    Timer1->SetEnabled(false);
    blinkCount_ = 0;
    nextCharacter();
}

void Typing::Timer2_Tick() {
    Timer2->SetEnabled(false);
    rt.forms.Unload(this);
}

void Typing::setPinyinShown(bool shown) {
    pinyinShown_ = shown;
    Shape1->Filled = shown;
    Shape1->update();
    // The caption names the state in force.
    Label11->SetCaption(shown ? QStringLiteral("Show Pinyin") : QStringLiteral("Hide Pinyin"));
    Label3->setHidden(!shown);
}

void Typing::Label11_Click() {
    setPinyinShown(!pinyinShown_);
}

void Typing::Form_Click() {
    if (!inputEnabled_ || !hasTarget()) return;
    if (focusLost_) {
        sayTarget();
        focusLost_ = false;
    } else {
        ReplayWave(rt, OwnerTag::None);
    }
}

void Typing::Form_Deactivate() {
    Label8->hide();
    focusLost_ = true;
    savedPrompt_ = Label6->Caption();
    Label6->SetCaption(kFocusLost);
}

void Typing::Form_Activate() {
    Label6->SetCaption(savedPrompt_);
    Label8->show();
}

void Typing::Image3_MouseMove() {
    closeHover_ = true;
    Image3->SetPicture(Image4->Picture());
    Image3->PictureName = Image4->PictureName;
}

void Typing::Form_MouseMove(int, int, int, int) {
    if (!closeHover_) return;
    closeHover_ = false;
    Image3->SetPicture(Image1->Picture());
    Image3->PictureName = Image1->PictureName;
}

void Typing::Image3_Click() {
    rt.forms.Unload(this);
}

void Typing::Form_Unload(bool& cancel) {
    Timer5->SetEnabled(false);
    if (!leaveFreely_ &&
        advise(QStringLiteral("You haven't finished task 2 yet. Let's finish task 2 now, "
                              "otherwise you are unable to do the next task."),
               Mb::OKCancel | Mb::Information) == Mb::OK) {
        cancel = true;
        return;
    }
    // Nothing of the drill runs on once the form goes.
    Timer1->SetEnabled(false);
    Timer2->SetEnabled(false);

    AppState& app = rt.app;
    app.OpenTask = 0;
    if (rt.sound) rt.sound->MMControl1->SetCommand(QStringLiteral("Close"));
    if (Form* dictionary = rt.forms.Find(QString::fromLatin1(kDictionary))) dictionary->Hide();
    if (Form* related = rt.forms.Find(QStringLiteral("Expressions_Related")))
        rt.forms.Unload(related);
    ShowMenuAgain(rt);
    FocusStudyTask(rt);
}

int Typing::advise(const QString& text, int flags) {
    const int answer = rt.MsgBox(text, flags, QStringLiteral("Advice"));
    // The box took the focus; the learner goes on typing here without a click.
    if (isVisible()) SetFocus();
    return answer;
}

void Typing::ListWordsHolding(const QString& character) {
    // The related-expressions panel, when it stands, lists up to ten words holding the character.
    if (auto* panel = rt.forms.Get<ExpressionsRelated>()) panel->Common03(character);
}

} // namespace vt
