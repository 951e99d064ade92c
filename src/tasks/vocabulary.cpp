#include "tasks/vocabulary.h"

#include "core/data_paths.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "platform/screen.h"
#include "platform/timers.h"
#include "search/dictionary.h"
#include "shell/form_stacks.h"
#include "shell/study.h"
#include "tasks/fen_pei_tiao.h"
#include "tasks/find_sentence_logic.h"

#include <QEvent>

namespace vt {

namespace {

constexpr unsigned kRed = 0x0000FF; // blue-green-red
constexpr unsigned kBlack = 0x000000;
constexpr unsigned kHoverPaper = 0x80FFFF; // light yellow behind the line under the mouse
constexpr int kOptionGap = 35;
constexpr QRect kFirstOption{840, 1860, 6540, 300};
constexpr QRect kFirstNumber{240, 1860, 600, 300};

QString TwoLines(const char* english, const char* chinese) {
    return QString::fromUtf8(english) + u'\n' + QString::fromUtf8(chinese);
}

} // namespace

Vocabulary::Vocabulary(Runtime& runtime) : AppForm(runtime, kName) {
    SetCaption(QStringLiteral("Vocabulary"));
    Move(0, 0, 9600, 6240);
    KeyPreview = true;

    AddLabel(NAMED(Label3), {240, 120, 9120, 540},
             "Your task is to find out the correct English meanings of the Chinese vocabulary "
             "showing above. Pay attention to related sentences on the Dictionary window, please.")
        ->setWordWrap(true);
    AddLabel(NAMED(Label6), {240, 720, 9120, 300},
             "To complete this task, your correctness rate must reach 80%")
        ->SetForeColor(0x0000C0);

    AddLabel(NAMED(Label1), {240, 1080, 4200, 660})->SetFontSize(24);
    AddLabel(NAMED(Label9), {4560, 1080, 2040, 660})->SetFontBold(true);
    Label9->SetForeColor(0x8B3A1F);

    static const char* const captions[] = {"Correct", "Wrong", "%", "No."};
    for (int i = 0; i < 4; ++i) {
        const int left = 6720 + i * 660;
        AddLabel(NAMED(Label5, i), {left, 1080, 660, 300}, captions[i])
            ->setAlignment(Qt::AlignCenter);
        Label* value = AddLabel(NAMED(Label4, i), {left, 1380, 660, 330}, "0");
        value->setAlignment(Qt::AlignCenter);
        value->SetFontBold(true);
    }

    // Only the first option line stands in the design; the others are made at load.
    addOptionLine(0, kFirstOption.y());
    Label8[0]->SetCaption(QStringLiteral("  1.  "));

    const int barTop = kFirstOption.y() + 8 * (kFirstOption.height() + kOptionGap) + 120;
    AddLabel(NAMED(Label7), {240, barTop, 1800, 300}, "Time progressbar:");
    AddControl(NAMED(FenPeiTiao1), {2040, barTop, 7320, 240});
    AddButton(NAMED(Command2), {240, barTop + 480, 1500, 450}, "Start",
              [this] { Command2_Click(); });
    AddButton(NAMED(Command5), {7860, barTop + 480, 1500, 450}, "Close",
              [this] { rt.forms.Unload(this); });

    AddTimer(NAMED(Timer1), 1000, [this] { Timer1_Tick(); });
    AddTimer(NAMED(Timer2), kAnswerMsPerMeaning, [this] { Timer2_Tick(); });
    AddTimer(NAMED(Timer3), kAnswerMsPerMeaning, [this] { Timer3_Tick(); });
    AddTimer(NAMED(Timer4), 2000, [this] { Timer4_Tick(); });
}

void Vocabulary::addOptionLine(int i, int top) {
    Label* number = AddLabel(NAMED(Label8, i), kFirstNumber.translated(0, top - kFirstNumber.y()),
                             QStringLiteral("%1.  ").arg(i + 1));
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    number->setVisible(i == 0);
    Label* line = AddLabel(NAMED(Label2, i), kFirstOption.translated(0, top - kFirstOption.y()));
    line->SetFontSize(11);
    line->setWordWrap(false);
    line->SetForeColor(kBlack);
    line->SetBackColor(kHoverPaper);
    line->setAutoFillBackground(false); // the paper shows only under the mouse
    line->setCursor(Qt::PointingHandCursor);
    line->setMouseTracking(true);
    line->installEventFilter(this);
    line->setVisible(i == 0);
}

void Vocabulary::Form_Load() {
    AppState& app = rt.app;
    Label1->SetCaption(QString());
    BarStep = static_cast<float>(WidthTwips(FenPeiTiao1)) / static_cast<float>(kBarTicks);
    LastOption = kLastOption;
    app.VocabularyTaskOpen = true;
    // Each line stands below the one before it; kept in twips, so that the gaps stay even.
    int top = kFirstOption.y();
    for (int i = 1; i <= LastOption; ++i) {
        top += kFirstOption.height() + kOptionGap;
        addOptionLine(i, top);
    }
    Label1->SetCaption(QString::number(app.LessonWordRows) + QStringLiteral(" vocabulary"));
    NoFinishWarning = !AtStudyPosition(app);
}

void Vocabulary::Command2_Click() {
    Command2->setEnabled(false);
    CorrectCount = 0;
    WrongCount = 0;
    Label1->SetCaption(QString());
    Label9->SetCaption(QString());
    BarValue = 0;
    FenPeiTiao1->SetProgress(BarValue);
    for (Label* counter : Label4)
        counter->SetCaption(QStringLiteral("0"));
    const AppState& app = rt.app;
    DrillCount =
        static_cast<int16_t>(std::clamp<int>(app.LessonWordRows, 0, app.LessonWords.Count()));
    rt.random.Randomize();
    CurrentWord = 0;
    Drill = ShuffleWords(app.LessonWords, DrillCount, rt.random);
    if (DrillCount == 0) {
        // Nothing to ask: the pass ends at once.
        Timer3_Tick();
        return;
    }
    nextWord();
}

void Vocabulary::nextWord() {
    rt.random.Randomize();
    Label9->SetCaption(QString());
    ++CurrentWord;
    const LessonWord& word = current();
    Label1->SetCaption(word.Chinese);

    Answers = SplitMeanings(word.Meaning);
    AnswerLines = DrawAnswerLines(static_cast<int>(Answers.size()), LastOption, rt.random);
    // A word with more meanings than lines shows those that found a line.
    Answers = Answers.mid(0, static_cast<qsizetype>(AnswerLines.size()));
    MeaningCount = static_cast<int16_t>(Answers.size());

    for (int i = 0; i <= LastOption; ++i) {
        Label* line = Label2[static_cast<size_t>(i)];
        const auto at = std::find(AnswerLines.begin(), AnswerLines.end(), i);
        if (at != AnswerLines.end()) {
            setCaptionCapped(i, OptionCaption(Answers[at - AnswerLines.begin()]));
            line->setToolTip(word.Chinese);
        } else {
            setCaptionCapped(i, OptionCaption(DrawWrongMeaning(Drill, CurrentWord, rt.random)));
            line->setToolTip(QString());
        }
        line->show();
        Label8[static_cast<size_t>(i)]->show();
        line->SetForeColor(kBlack);
    }

    BarValue = 0;
    FenPeiTiao1->SetProgress(BarValue);
    Label4[3]->SetCaption(QString::number(CorrectCount + WrongCount + 1));
    Timer1->SetEnabled(true);
    Accepting = true;
    SpeakPinyin(rt, word.Pinyin);
    if (auto* dictionary = rt.forms.Get<Dictionary>()) {
        QString text = Label1->Caption();
        dictionary->Common01(text, true);
    }
}

// A line is as wide as its caption, up to the cap.
void Vocabulary::setCaptionCapped(int i, const QString& caption) {
    Label* line = Label2[static_cast<size_t>(i)];
    line->SetCaption(caption);
    const int wanted = line->fontMetrics().horizontalAdvance(caption) + 2 * line->margin() + 4;
    line->resize(std::min(wanted, TwipsToPx(kOptionWidthCap)), line->height());
}

bool Vocabulary::eventFilter(QObject* watched, QEvent* event) {
    for (int i = 0; i <= LastOption; ++i) {
        if (watched != Label2[static_cast<size_t>(i)]) continue;
        switch (event->type()) {
        case QEvent::MouseButtonPress:
            Label2_MouseDown(i);
            return true;
        case QEvent::MouseMove:
            Label2_MouseMove(i);
            return true; // the form's own mouse move would put the light out again
        case QEvent::Leave:
            // Leaving straight onto another control never reaches the form's mouse move.
            if (i == HoverOption) putOutLight();
            break;
        default:
            break;
        }
    }
    return AppForm::eventFilter(watched, event);
}

void Vocabulary::Label2_MouseMove(int index) {
    if (index == HoverOption) return;
    putOutLight();
    Label2[static_cast<size_t>(index)]->setAutoFillBackground(true);
    HoverOption = static_cast<int16_t>(index);
}

void Vocabulary::Form_MouseMove(int, int, int, int) {
    putOutLight();
}

void Vocabulary::putOutLight() {
    if (HoverOption < 0) return;
    Label2[static_cast<size_t>(HoverOption)]->setAutoFillBackground(false);
    HoverOption = -1;
}

void Vocabulary::Label2_MouseDown(int index) {
    if (!Accepting) return;
    const QString& word = current().Chinese;
    Label* clicked = Label2[static_cast<size_t>(index)];
    if (RTrim(clicked->toolTip()) == word) {
        for (Label* line : Label2)
            if (RTrim(line->toolTip()) == word) line->SetForeColor(kRed);
        ++CorrectCount;
        Label9->SetCaption(TwoLines("Good job!", "正确!"));
        PlayWave(rt, VerdictSoundFile(rt.app.AppPath, Verdict::Right), OwnerTag::None);
        showAnswer();
        Label4[0]->SetCaption(QString::number(CorrectCount));
    } else {
        ++WrongCount;
        Label9->SetCaption(TwoLines("Be careful!", "仔细点!"));
        PlayWave(rt, VerdictSoundFile(rt.app.AppPath, Verdict::Careful), OwnerTag::None);
        Label4[1]->SetCaption(QString::number(WrongCount));
        clicked->SetForeColor(kBlack);
        showAnswer();
    }
}

void Vocabulary::Timer1_Tick() {
    BarValue = std::floor(BarValue) + BarStep;
    FenPeiTiao1->SetProgress(BarValue);
    if (static_cast<float>(WidthTwips(FenPeiTiao1)) > BarValue) return;
    Timer1->SetEnabled(false);
    ++WrongCount;
    Label9->SetCaption(TwoLines("Carry on!", "继续努力!"));
    PlayWave(rt, VerdictSoundFile(rt.app.AppPath, Verdict::CarryOn), OwnerTag::None);
    Label4[1]->SetCaption(QString::number(WrongCount));
    showAnswer();
}

void Vocabulary::showAnswer() {
    Accepting = false;
    Timer1->SetEnabled(false);
    Timer4->SetEnabled(false);
    for (int i = 0; i <= LastOption; ++i) {
        Label* line = Label2[static_cast<size_t>(i)];
        if (std::find(AnswerLines.begin(), AnswerLines.end(), i) != AnswerLines.end())
            line->SetForeColor(kRed);
        else
            line->hide();
    }
    Label4[2]->SetCaption(QString::number(CorrectnessRate(CorrectCount, WrongCount)));
    Timer* wait = CorrectCount + WrongCount >= DrillCount ? Timer3 : Timer2;
    wait->SetInterval(std::max<int>(MeaningCount, 1) * kAnswerMsPerMeaning);
    wait->SetEnabled(true);
}

void Vocabulary::Timer2_Tick() {
    Timer2->SetEnabled(false);
    nextWord();
}

void Vocabulary::Timer4_Tick() {
    Timer4->SetEnabled(false);
    if (CurrentWord >= 1 && CurrentWord <= Drill.Count()) SpeakPinyin(rt, current().Pinyin);
}

void Vocabulary::Timer3_Tick() {
    Timer1->SetEnabled(false);
    Timer2->SetEnabled(false);
    Timer3->SetEnabled(false);
    if (rt.sound) rt.sound->MMControl1->SetCommand(QStringLiteral("Close"));
    Timer4->SetEnabled(false);
    for (int i = 0; i <= LastOption; ++i) {
        Label2[static_cast<size_t>(i)]->hide();
        Label2[static_cast<size_t>(i)]->SetForeColor(kBlack);
        Label8[static_cast<size_t>(i)]->hide();
    }
    Command2->setEnabled(true);

    const QString rate = Label4[2]->Caption();
    if (AtStudyPosition(rt.app)) {
        if (rate.toInt() >= kVocabularyPass) {
            AdvanceStudy(rt);
            const int answer =
                rt.MsgBox(QStringLiteral("You have finished task 3. Let's go on to do task 4."),
                          Mb::OKCancel | Mb::Information, QStringLiteral("Advice"));
            NoFinishWarning = true;
            if (answer == Mb::OK) {
                rt.forms.Unload(this);
                return;
            }
        } else {
            // The word, the verdict and the bar stay as they are.
            rt.MsgBox(QStringLiteral("Your correctness rate hasn't reached 80%. Do task 3 again, "
                                     "please."),
                      Mb::OKOnly | Mb::Information, QStringLiteral("Advice"));
            return;
        }
    } else {
        rt.MsgBox(QStringLiteral("Your correctness rate is ") + rate + QStringLiteral("%."),
                  Mb::OKOnly | Mb::Information, QStringLiteral("Notice"));
    }
    BarValue = 0;
    FenPeiTiao1->SetProgress(BarValue);
    Label1->SetCaption(QString());
    Label9->SetCaption(QString());
}

void Vocabulary::Form_KeyDown(int& keyCode, int) {
    if (keyCode == 27) {
        keyCode = 0;
        rt.forms.Unload(this);
    }
}

void Vocabulary::Form_Unload(bool& cancel) {
    if (!NoFinishWarning &&
        rt.MsgBox(QStringLiteral("You haven't finished task 3 yet. Let's finish task 3 now, "
                                 "otherwise you are unable to do the next task."),
                  Mb::OKCancel | Mb::Information, QStringLiteral("Advice")) == Mb::OK) {
        cancel = true;
        return;
    }
    // Nothing of the pass runs on once the form goes.
    for (Timer* t : {Timer1, Timer2, Timer3, Timer4})
        t->SetEnabled(false);
    if (rt.sound) rt.sound->MMControl1->SetCommand(QStringLiteral("Close"));
    if (Form* dictionary = rt.forms.Find(QString::fromLatin1(kDictionary))) dictionary->Hide();
    rt.app.VocabularyTaskOpen = false;
    rt.app.OpenTask = 0;
    ShowMenuAgain(rt);
    FocusStudyTask(rt);
}

} // namespace vt
