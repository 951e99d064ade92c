// The read-text form on the virtual clock: picking sentences, the judgement of a translation on
// leaving, the reading aloud word by word and sentence by sentence, and a lesson whose
// recordings do not match its lines.

#include "core/data_paths.h"
#include "core/knowledge_base.h"
#include "core/lesson_content.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "platform/media_control.h"
#include "search/expressions_related.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"
#include "tasks/fen_pei_tiao.h"
#include "tasks/notepad.h"
#include "tasks/text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QSet>
#include <QTest>
#include <gtest/gtest.h>

namespace vt {
namespace {

using test::TestEnv;

const QString kFinished = QStringLiteral("You have finished task 6. Let's go on to do task 7.");
const QString kTranslateAdvice =
    QStringLiteral("You haven't finished translating the text into Chinese yet. Let's finish task "
                   "1 now, otherwise you are unable to do the next task.");
const QString kReadAdvice = QStringLiteral("You haven't finished task 6 yet. Let's finish task 6 "
                                           "now, otherwise you are unable to do the next lesson.");

// A word of the walk as the learner meets it: the mark in the text and the syllables said.
struct Spoken {
    QString word;
    QStringList syllables;
};

struct TextTest : ::testing::Test {
    TestEnv env;
    QPointer<Text> form;

    void setLesson(int lesson, int task, const QStringList& lines, bool atStudyPosition = true) {
        AppState& app = env.rt->app;
        app.OpenLesson = static_cast<int16_t>(lesson);
        app.OpenTask = static_cast<int16_t>(task);
        app.StudyLesson = static_cast<int16_t>(atStudyPosition ? lesson : lesson + 1);
        app.StudyTask = static_cast<int16_t>(task);
        app.TextLines.Erase();
        for (const QString& l : lines)
            app.TextLines.Append(l);
        app.TextLineCount = static_cast<int16_t>(lines.size());
        app.TextTitle = lines.value(0);
    }
    void setWords(const std::vector<LessonWord>& words) {
        AppState& app = env.rt->app;
        app.LessonWords.Erase();
        for (const LessonWord& w : words)
            app.LessonWords.Append(w);
        app.LessonWordRows = static_cast<int16_t>(words.size());
    }
    void setTable(const std::vector<std::pair<QString, QString>>& rows) {
        AppState& app = env.rt->app;
        for (const auto& [chinese, pinyin] : rows) {
            app.WordTable.Append(WordRow{chinese, QStringLiteral(" x ")});
            app.WordPinyin.Append(pinyin);
            app.WordOrigin.Append(WordSource{1, 1});
        }
        app.WordCount = static_cast<int16_t>(app.WordTable.Count());
    }
    void writeLineSounds(int lesson, int lines) {
        for (int i = 1; i <= lines; ++i)
            env.WriteFile(SentenceSoundFile({}, lesson, i), test::ToneWav(300 + 50 * i, 400));
    }
    void writeSyllables(const QStringList& syllables) {
        for (const QString& s : syllables)
            env.WriteFile(SyllableSoundFile({}, s), test::ToneWav(500, 150));
    }
    void open() {
        form = env.rt->forms.Load<Text>();
        form->Show();
    }
    void openWithRelated() {
        env.rt->forms.Load<ExpressionsRelated>();
        open();
    }
    QStringList queued() const {
        const AppState& app = env.rt->app;
        QStringList s;
        for (int i = 1; i <= app.SpeechSyllableCount; ++i)
            s << app.SpeechQueue[i].Sound;
        return s;
    }
    // Runs the first step from Start: each word as marked and said, until the walk reaches the
    // sentences or stays at a word for longer than any pause.
    std::vector<Spoken> walkWords() {
        std::vector<Spoken> words;
        form->Command5->click();
        while (form && form->ReadingStep == 1) {
            words.push_back({form->Text1->SelText(), queued()});
            const int16_t at = form->WalkPosition;
            int waited = 0;
            while (form && form->ReadingStep == 1 && form->WalkPosition == at && waited < 10000) {
                env.clock.Advance(100);
                waited += 100;
            }
            if (waited >= 10000) break;
        }
        return words;
    }
};

TEST_F(TextTest, PickingSentencesMarksAndPlaysThemAndThePairOfButtonsFollows) {
    writeLineSounds(2, 3);
    env.WriteFile(SentenceSoundFile({}, 2, 3), test::ToneWav(440, 2000));
    setLesson(2, 1, {"你好", "  我好。", "你好"}, false);
    open();
    EXPECT_EQ(form->Combo1->count(), 4);
    EXPECT_EQ(form->Label1->Caption(), "0 / 3");
    EXPECT_FALSE(form->Command5->isEnabled());
    EXPECT_FALSE(form->Label4->isVisible());

    form->Command2->click(); // Playback with nothing picked plays sentence 1
    EXPECT_EQ(form->CurrentSentence, 1);
    EXPECT_FALSE(form->Command3->isEnabled());
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("Lesson_2/1.wav"));

    form->Command4->click();
    form->Command4->click();
    EXPECT_EQ(form->Label1->Caption(), "3 / 3");
    EXPECT_FALSE(form->Command4->isEnabled());
    EXPECT_TRUE(form->Command3->isEnabled());
    // A repeated sentence is marked at its first place, the title.
    EXPECT_EQ(form->Text1->SelStart(), 52);
    EXPECT_EQ(form->Text1->SelText(), "你好");
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("Lesson_2/3.wav"));
    EXPECT_TRUE(form->Timer2->Enabled());
    env.clock.Advance(100);
    EXPECT_GT(form->FenPeiTiao1->Filled(), FenPeiTiao::kMinimumWidth);
    // A press three quarters along the bar jumps there in the sentence.
    const int width = WidthTwips(form->FenPeiTiao1);
    Q_EMIT form->FenPeiTiao1->Seek(static_cast<float>(width) * 3 / 4);
    env.clock.Advance(40);
    EXPECT_NEAR(env.sound->MMControl1->Position(), 1540, 100);
    EXPECT_NEAR(form->FenPeiTiao1->Filled(), width * 3 / 4, width / 10);
    env.clock.Advance(600);
    EXPECT_FALSE(form->Timer2->Enabled()) << "the end of the sentence stops the bar";
    EXPECT_EQ(form->FenPeiTiao1->Filled(), FenPeiTiao::kMinimumWidth);
    EXPECT_FALSE(form->Timer5->Enabled()) << "no pause in task 1";
}

TEST_F(TextTest, APressOnTheTextClearsTheClipboard) {
    writeLineSounds(2, 1);
    setLesson(2, 1, {"你好"}, false);
    open();
    QGuiApplication::clipboard()->setText("old");
    ASSERT_EQ(QGuiApplication::clipboard()->text(), "old");
    QTest::mousePress(form->Text1->viewport(), Qt::LeftButton, {}, QPoint(20, 10));
    QTest::mouseRelease(form->Text1->viewport(), Qt::LeftButton, {}, QPoint(20, 10));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().isEmpty());
}

TEST_F(TextTest, MissingRecordingsAreToldASecondLaterAndEverythingStaysOff) {
    writeLineSounds(4, 2);
    setLesson(4, 1, {"你好", "  我好。", "他好。"});
    open();
    for (QWidget* w : std::initializer_list<QWidget*>{form->Combo1, form->Command2, form->Command3,
                                                      form->Command4, form->Command5, form->Text1})
        EXPECT_FALSE(w->isEnabled()) << w->objectName().toStdString();
    env.clock.Advance(999);
    EXPECT_EQ(env.boxes.Count(), 0);
    env.clock.Advance(1);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().title, "Warning");
    EXPECT_EQ(env.boxes.Last().text, "Error: The number of sound files ≠ the number of lines in "
                                     "the script. Check the files, please.");
    env.clock.Advance(5000);
    EXPECT_EQ(env.boxes.Count(), 1) << "told once";
}

// The judgement of task 1 on leaving, with a notepad that holds the translation.
struct TranslationTest : TextTest {
    void SetUp() override {
        writeLineSounds(3, 2);
        setLesson(3, 1, {"你好", "  他好。"});
        setWords({{"你", "you", "n.i3"}, {"好", "good (adj.)", "h.ao3"}});
        env.rt->forms.Load<Notepad>();
        open();
    }
    void translate(const QString& text) { env.rt->forms.Get<Notepad>()->Text1->SetText(text); }
};

TEST_F(TranslationTest, HalfTheWordsFailsAndOkStays) {
    translate(QString(40, u' ') + "Hello, YOU.");
    env.boxes.Answer(Mb::OK);
    EXPECT_FALSE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.boxes.Last().text, kTranslateAdvice);
    EXPECT_EQ(env.rt->app.StudyTask, 1);
    // Cancel lets the form close and the position stays.
    env.boxes.Answer(Mb::Cancel);
    EXPECT_TRUE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.rt->app.StudyTask, 1);
    EXPECT_EQ(env.rt->app.OpenTask, 0);
    EXPECT_EQ(env.rt->forms.Get<Notepad>(), nullptr);
}

TEST_F(TranslationTest, OneAndAHalfPassesAndATooShortOneAsks) {
    translate("you");
    env.boxes.Answer(Mb::OK);
    EXPECT_FALSE(env.rt->forms.Unload(form)) << "shorter than half the text";
    EXPECT_EQ(env.boxes.Count(), 1);

    // Three tokens of two rows: 1.5 rounds to 2 and passes.
    env.rt->app.LessonWords[2].Meaning = "good well";
    translate(QString(40, u' ') + "You are good, very WELL.");
    EXPECT_TRUE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.rt->app.StudyTask, 2);
}

TEST_F(TextTest, AwayFromTheStudyPositionLeavingNeverAsksNorAdvances) {
    for (int task : {1, 6}) {
        writeLineSounds(5, 1);
        setLesson(5, task, {"你好"}, false);
        open();
        EXPECT_TRUE(form->TaskFinished);
        EXPECT_TRUE(env.rt->forms.Unload(form)) << "task " << task;
        EXPECT_EQ(env.boxes.Count(), 0);
        EXPECT_EQ(env.rt->app.StudyLesson, 6);
    }
}

TEST_F(TextTest, LeavingAnUnfinishedReadingAsks) {
    writeLineSounds(5, 1);
    setLesson(5, 6, {"你好"});
    open();
    env.boxes.Answer(Mb::OK);
    EXPECT_FALSE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.boxes.Last().text, kReadAdvice);
    env.boxes.Answer(Mb::Cancel);
    EXPECT_TRUE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.rt->app.StudyTask, 6);
}

TEST_F(TextTest, TheReadingWalksEveryWordThenEverySentenceAndMovesOnToTaskSeven) {
    writeLineSounds(2, 2);
    writeSyllables({"ni3", "hao3", "ta1"});
    setLesson(2, 6, {"你好", "  你好，他好。"});
    setWords({{"你好", "hello", "n.i3 h.ao3"}, {"他", "he", "t.a1"}});
    setTable({{"好", "h.ao3"}});
    openWithRelated();
    EXPECT_EQ(form->Label1->Caption(), "1 / 2");
    EXPECT_TRUE(form->Label4->isVisible());
    EXPECT_FALSE(form->Combo1->isEnabled());

    const std::vector<Spoken> words = walkWords();
    ASSERT_EQ(words.size(), 4u);
    EXPECT_EQ(words[0].word, "你好");
    EXPECT_EQ(words[0].syllables, QStringList({"ni3", "hao3"}));
    EXPECT_EQ(words[1].word, "你好");
    EXPECT_EQ(words[2].word, "他");
    EXPECT_EQ(words[2].syllables, QStringList({"ta1"}));
    EXPECT_EQ(words[3].word, "好");
    EXPECT_EQ(words[3].syllables, QStringList({"hao3"}));

    // Step 2 follows with the first sentence; the pause comes after each.
    ASSERT_TRUE(form);
    EXPECT_EQ(form->Label1->Caption(), "2 / 2");
    EXPECT_EQ(env.rt->forms.Get<ExpressionsRelated>()->RowCount, 0);
    EXPECT_EQ(form->WalkPosition, 1);
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("Lesson_2/1.wav"));
    env.clock.Advance(400 + 2500);
    EXPECT_EQ(form->WalkPosition, 1) << "the pause runs three seconds behind the sentence";
    env.clock.Advance(1000);
    EXPECT_EQ(form->WalkPosition, 2);
    EXPECT_EQ(form->Text1->SelText(), "你好，他好。");
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("Lesson_2/2.wav"));
    EXPECT_EQ(env.boxes.Count(), 0);
    env.clock.Advance(4000);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, kFinished);
    EXPECT_EQ(env.boxes.Last().title, "Advice");
    EXPECT_EQ(env.rt->app.StudyTask, 7);
    EXPECT_EQ(env.rt->forms.Get<Text>(), nullptr);
    EXPECT_EQ(env.rt->app.OpenTask, 0);
}

TEST_F(TextTest, TheSameWordTwiceIsMarkedAtBothPlacesInOrder) {
    writeLineSounds(2, 1);
    writeSyllables({"ta1"});
    setLesson(2, 6, {"他他他"}, false);
    setWords({{"他", "he", "t.a1"}});
    open();
    form->Command5->click();
    std::vector<int> starts;
    while (form && form->ReadingStep == 1 && starts.size() < 5) {
        starts.push_back(form->Text1->SelStart());
        env.clock.Advance(150 + 3050);
    }
    EXPECT_EQ(starts, std::vector<int>({50, 51, 52}));
}

TEST_F(TextTest, ALatinTextGoesStraightToTheSentences) {
    writeLineSounds(2, 2);
    setLesson(2, 6, {"Hello", "  ok, fine."}, false);
    open();
    form->Command5->click();
    EXPECT_EQ(form->ReadingStep, 2);
    EXPECT_EQ(form->Label1->Caption(), "2 / 2");
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("Lesson_2/1.wav"));
}

TEST_F(TextTest, AWordWithNothingToSayStaysWithoutAPause) {
    writeLineSounds(2, 1);
    setLesson(2, 6, {"山水"}, false);
    setWords({{"山", "hill", "shan"}});
    open();
    form->Command5->click();
    EXPECT_EQ(form->Text1->SelText(), "山");
    env.clock.Advance(10000);
    EXPECT_EQ(form->ReadingStep, 1);
    EXPECT_FALSE(form->Timer5->Enabled());
    EXPECT_EQ(form->Text1->SelText(), "山");
    EXPECT_FALSE(form->Command5->isEnabled()) << "a reading cannot be stopped but by leaving";
}

// --- The sample course ----------------------------------------------------------------------

TEST_F(TextTest, TheFirstLessonIsReadAloudToItsEnd) {
    const QString course = QStringLiteral(VANTORIA_APP_DIR);
    if (!env.CopyCourseScripts(course) || !env.CopyCourseFolder(course, "Phonetic Symbols") ||
        !env.CopyCourseFolder(course, "Lessons/Sound/Lesson_1"))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    LoadProgress progress;
    LoadKnowledgeBase(*env.rt, progress);
    setLesson(1, 6, {});
    LoadLessonScripts(*env.rt);
    ASSERT_GT(env.rt->app.TextLineCount, 0);
    openWithRelated();
    const QString text = form->Text1->Text();

    // Every Chinese character of the text that some word holds is read once, in order, a
    // syllable for each; a character no word holds (a name left out of the course) is passed.
    const AppState& app = env.rt->app;
    QSet<QChar> known;
    for (int i = 1; i <= app.WordCount; ++i)
        for (QChar c : app.WordTable[i].Chinese)
            known.insert(c);
    for (int i = 1; i <= app.LessonWordRows; ++i)
        for (QChar c : app.LessonWords[i].Chinese)
            known.insert(c);
    QString readable;
    for (QChar c : ChineseOnly(text))
        if (known.contains(c)) readable += c;
    const std::vector<Spoken> words = walkWords();
    QString read;
    for (const Spoken& w : words) {
        read += w.word;
        EXPECT_EQ(w.syllables.size(), w.word.size()) << w.word.toStdString();
    }
    EXPECT_EQ(read, readable);
    EXPECT_GT(read.size(), 50);
    ASSERT_TRUE(form);
    ASSERT_EQ(form->ReadingStep, 2) << "the walk stayed at " << read.right(5).toStdString();

    // Then each sentence plays in turn.
    int played = 0;
    while (form && env.boxes.Count() == 0 && played < 100) {
        ++played;
        EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith(
            QStringLiteral("Lesson_1/%1.wav").arg(form->WalkPosition)));
        EXPECT_EQ(env.sound->MMControl1->Mode(), MMControl::ModePlaying);
        const int16_t at = form->WalkPosition;
        for (int waited = 0; form && form->WalkPosition == at && env.boxes.Count() == 0;
             waited += 100) {
            ASSERT_LT(waited, 60000) << "sentence " << at << " never ended";
            env.clock.Advance(100);
        }
    }
    EXPECT_EQ(played, env.rt->app.TextLineCount);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, kFinished);
    EXPECT_EQ(env.rt->app.StudyTask, 7);
}

} // namespace
} // namespace vt
