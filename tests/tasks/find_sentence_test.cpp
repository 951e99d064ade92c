// The sound-to-sentence task on the virtual clock: the sentences it asks, the verdicts and the
// rate, the end of a text, and a TV play's lines played from the lesson's track.

#include "core/data_paths.h"
#include "core/lesson_content.h"
#include "core/runtime.h"
#include "platform/media_control.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"
#include "tasks/fen_pei_tiao.h"
#include "tasks/find_sentence.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <gtest/gtest.h>

namespace vt {
namespace {

using test::TestEnv;

const QString kPassed = QStringLiteral("You have finished task 5. Let's go on to do task 6.");
const QString kNotReached =
    QStringLiteral("Your correctness rate hasn't reached 80%. Do task 5 again, please");

struct FindSentenceTest : ::testing::Test {
    TestEnv env;
    FindSentence* form = nullptr;

    // The lesson's text lines and where it stands; the task at the study position unless told.
    void setLesson(int lesson, const QStringList& lines, bool atStudyPosition = true) {
        AppState& app = env.rt->app;
        app.OpenLesson = static_cast<int16_t>(lesson);
        app.OpenTask = 5;
        app.StudyLesson = static_cast<int16_t>(atStudyPosition ? lesson : lesson + 1);
        app.StudyTask = 5;
        app.TextLines.Erase();
        for (const QString& l : lines)
            app.TextLines.Append(l);
        app.TextLineCount = static_cast<int16_t>(lines.size());
    }
    void writeVerdicts() {
        env.WriteFile("Sound/right.WAV", test::ToneWav(880, 200));
        env.WriteFile("Sound/wrong.WAV", test::ToneWav(220, 200));
    }
    // A recording for each line of a read text.
    void writeLineSounds(int lesson, int lines) {
        for (int i = 1; i <= lines; ++i)
            env.WriteFile(SentenceSoundFile({}, lesson, i), test::ToneWav(300 + 50 * i, 400));
    }
    void open() {
        form = env.rt->forms.Load<FindSentence>();
        form->Show();
    }
    void start() { form->Command5->click(); }
    void answer(bool right) {
        const int index = right ? form->RightOption : (form->RightOption + 1) % 3;
        form->Command2[static_cast<size_t>(index)]->click();
    }
    void next() { form->Command4->click(); }
    std::array<QString, 3> shown() const {
        return {form->Text1[0]->Text(), form->Text1[1]->Text(), form->Text1[2]->Text()};
    }
};

TEST_F(FindSentenceTest, AsksOnlyLinesOfFourChineseCharactersAndShowsTheSwapAfterAnAnswer) {
    writeVerdicts();
    writeLineSounds(3, 4); // line 5 has none
    setLesson(3, {"第三课", "你好！", "我们是学生。", "12345 ok", "他说：我很好。"});
    open();
    start();

    EXPECT_FALSE(form->Command5->isEnabled());
    EXPECT_EQ(form->CurrentLine, 3) << "the title and a short line are passed over";
    EXPECT_EQ(form->Label1->Caption(), "1");
    EXPECT_TRUE(form->MMControl1->FileName().endsWith("Lesson_3/3.wav"));
    EXPECT_EQ(form->MMControl1->Mode(), MMControl::ModePlaying);
    const auto versions = shown();
    EXPECT_EQ(versions[static_cast<size_t>(form->RightOption)], "我们是学生。");
    for (int i = 0; i < 3; ++i)
        if (i != form->RightOption) {
            EXPECT_NE(versions[static_cast<size_t>(i)], "我们是学生。");
        }

    answer(false);
    EXPECT_EQ(form->Label2->Caption(), "Wrong  不对!");
    EXPECT_EQ(form->Label4->Caption(), "0");
    EXPECT_FALSE(form->Command2[0]->isEnabled());
    EXPECT_FALSE(form->Command3->isEnabled());
    EXPECT_TRUE(form->Command4->isEnabled());
    for (int i = 0; i < 3; ++i) {
        const QString t = form->Text1[static_cast<size_t>(i)]->Text();
        if (i == form->RightOption) {
            EXPECT_EQ(t, "我们是学生。");
        } else {
            EXPECT_EQ(t.count(u'【'), 2) << t.toStdString();
            EXPECT_EQ(t.count(u'】'), 2) << t.toStdString();
        }
    }
    next();
    EXPECT_EQ(form->CurrentLine, 5) << "a line without four Chinese characters is skipped";
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, "There is no sound file for this sentence.");
    EXPECT_EQ(env.boxes.Last().title, "Warning");
    EXPECT_EQ(form->Label1->Caption(), "2");
    EXPECT_TRUE(form->Label2->Caption().isEmpty());
    answer(true);
    EXPECT_EQ(form->Label2->Caption(), "Right  正确!");
    EXPECT_EQ(form->Label4->Caption(), "50");

    next(); // the end of the text: 50 does not pass
    ASSERT_EQ(env.boxes.Count(), 2);
    EXPECT_EQ(env.boxes.Last().text, kNotReached);
    EXPECT_EQ(env.boxes.Last().title, "Advice");
    EXPECT_EQ(env.rt->app.StudyTask, 5);
    EXPECT_TRUE(form->Command5->isEnabled());
    EXPECT_FALSE(form->Command4->isEnabled());
    for (TextBox* t : form->Text1)
        EXPECT_TRUE(t->Text().isEmpty());

    // A new start begins at line 1 with the counts reset.
    start();
    EXPECT_EQ(form->CurrentLine, 3);
    EXPECT_EQ(form->SentenceNumber, 1);
    EXPECT_EQ(form->RightCount + form->WrongCount, 0);
    EXPECT_TRUE(form->Label4->Caption().isEmpty());
}

TEST_F(FindSentenceTest, ExactlyEightyPassesAndMovesTheStudyPositionOn) {
    writeVerdicts();
    writeLineSounds(2, 5);
    setLesson(
        2, {"我们是学生。", "他们是老师。", "你叫什么名字？", "我很喜欢中文。", "明天见，朋友！"});
    open();
    start();
    for (int i = 0; i < 5; ++i) {
        answer(i != 2);
        env.clock.Advance(100);
        if (i < 4) next();
    }
    EXPECT_EQ(form->Label4->Caption(), "80");
    env.boxes.Answer(Mb::Cancel); // stays to look back
    next();
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, kPassed);
    EXPECT_EQ(env.boxes.Last().flags, Mb::OKCancel | Mb::Information);
    EXPECT_EQ(env.rt->app.StudyLesson, 2);
    EXPECT_EQ(env.rt->app.StudyTask, 6);
    EXPECT_TRUE(form->Command5->isEnabled());
    // Done: the form now closes without asking.
    EXPECT_TRUE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.rt->app.OpenTask, 0);
    EXPECT_FALSE(env.rt->app.DictionaryFeedsTask);
}

TEST_F(FindSentenceTest, ATextWithNothingToAskEndsAtOnce) {
    writeVerdicts();
    // Away from the study position: no word at the end, and Start is offered again.
    setLesson(4, {"你好！", "谢谢。", "好好好好。"}, false);
    open();
    start();
    EXPECT_EQ(env.boxes.Count(), 0);
    EXPECT_EQ(form->SentenceNumber, 0);
    EXPECT_TRUE(form->Command5->isEnabled());
    EXPECT_FALSE(form->Command2[0]->isEnabled());
    // Nothing to ask cannot be failed: at the study position the task is passed.
    EXPECT_TRUE(env.rt->forms.Unload(form));
    setLesson(4, {"你好！", "谢谢。"});
    open();
    start();
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, kPassed);
    EXPECT_EQ(env.rt->forms.Get<FindSentence>(), nullptr) << "OK closes the form";
}

TEST_F(FindSentenceTest, LeavingUnfinishedAsksAndOkStays) {
    setLesson(7, {"我们是学生。"});
    open();
    env.boxes.Answer(Mb::OK);
    EXPECT_FALSE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.boxes.Last().title, "Advice");
    env.boxes.Answer(Mb::Cancel);
    EXPECT_TRUE(env.rt->forms.Unload(form));
    EXPECT_EQ(env.rt->app.OpenTask, 0);
    EXPECT_EQ(env.rt->app.StudyTask, 5);
}

// --- TV plays -------------------------------------------------------------------------------

struct PlayTest : FindSentenceTest {
    // Eight lines, each given 500 ms of a 4-second track.
    QStringList lines() const {
        return {"你在哪儿工作？", "我在银行工作。", "好。",   "他是我的朋友。",
                "我们去吃饭吧。", "今天天气很好。", "走吧！", "明天见，朋友！"};
    }
    std::vector<LinePosition> stretches() const {
        std::vector<LinePosition> s;
        for (int32_t r = 0; r < 8; ++r)
            s.push_back({r * 500, r * 500 + 400});
        return s;
    }
    bool writeTrack() {
        const QByteArray mp3 = test::ToneMp3(440, 4000);
        if (mp3.isEmpty()) return false;
        env.WriteFile(PlayTrackFile({}, 81), mp3);
        return true;
    }
    void writePositions(const QByteArray& bytes) {
        env.WriteFile(PlayLinePositionsFile({}, 81), bytes);
    }
};

TEST_F(PlayTest, ABadControlFileIsToldAndStartStaysOff) {
    if (!writeTrack()) GTEST_SKIP() << "no MP3 writer here";
    writeVerdicts();
    setLesson(81, lines());
    open();
    EXPECT_EQ(form->MMControl1->DeviceType(), "MpegvIDEO");
    // No track at all comes first.
    QFile::remove(env.Path(PlayTrackFile({}, 81)));
    start();
    EXPECT_EQ(env.boxes.Last().text, "There is no sound file for this sentence.");
    ASSERT_TRUE(writeTrack());

    struct Case {
        QByteArray bytes;
        const char* message;
    };
    auto seven = stretches();
    seven.pop_back();
    auto beyond = stretches();
    beyond[7].To = 4500; // past the track's end
    const Case cases[] = {
        {PackLinePositions(seven), "Error: File yeap.zvk doesn't match file voep.zvk!"},
        {QByteArray(), "File yeap.zvk is empty!"},
        {PackLinePositions(beyond), "Error: There is an error in control file!"},
    };
    for (const Case& c : cases) {
        writePositions(c.bytes);
        form->Command5->setEnabled(true);
        const int before = env.boxes.Count();
        start();
        ASSERT_EQ(env.boxes.Count(), before + 1);
        EXPECT_EQ(env.boxes.Last().text, c.message);
        EXPECT_EQ(env.boxes.Last().title, "Warning");
        EXPECT_FALSE(form->Command5->isEnabled());
        EXPECT_FALSE(form->Command2[0]->isEnabled());
        EXPECT_TRUE(form->Positions.empty());
    }
}

TEST_F(PlayTest, EachLinePlaysItsStretchAndTheBarFollowsIt) {
    if (!writeTrack()) GTEST_SKIP() << "no MP3 writer here";
    writeVerdicts();
    setLesson(81, lines(), false);
    writePositions(PackLinePositions(stretches()));
    open();
    start();
    EXPECT_NEAR(form->TrackLength, 4000, 60);
    EXPECT_EQ(form->CurrentLine, 1);
    const int width = WidthTwips(form->FenPeiTiao1);

    // Line 1: 0 to 400 ms. Halfway the bar stands about halfway.
    env.clock.Advance(200);
    EXPECT_NEAR(form->MMControl1->Position(), 200, 30);
    EXPECT_NEAR(form->FenPeiTiao1->Filled(), width / 2, width / 10);
    // Its end stops the bar and the timer, at the end of the stretch.
    env.clock.Advance(300);
    EXPECT_FALSE(form->Timer1->Enabled());
    EXPECT_EQ(form->FenPeiTiao1->Filled(), FenPeiTiao::kMinimumWidth);
    EXPECT_NEAR(form->MMControl1->Position(), 400, 50);

    // Playback plays the same stretch again.
    form->Command3->click();
    env.clock.Advance(100);
    EXPECT_NEAR(form->MMControl1->Position(), 100, 30);
    env.clock.Advance(400);

    answer(true);
    next();
    EXPECT_EQ(form->CurrentLine, 2);
    env.clock.Advance(200); // line 2: 500 to 900 ms
    EXPECT_NEAR(form->MMControl1->Position(), 700, 30);
    EXPECT_NEAR(form->FenPeiTiao1->Filled(), width / 2, width / 10);
}

// --- The sample course ----------------------------------------------------------------------

// Copies one lesson's scripts and media and the verdict sounds of the built course into the
// test's own folder, so that the study position written on the way never lands in the course.
bool copyLesson(const QString& from, const QString& to, int lesson) {
    const QString root = DataFolderRoot(from);
    if (!QFile::exists(TitleFile(root))) return false;
    QStringList paths;
    for (const QString& folder :
         {LessonScriptFolder(root, lesson), LessonSoundFolder(root, lesson), root + "Sound"}) {
        QDirIterator it(folder, QDir::Files);
        while (it.hasNext())
            paths << it.next();
    }
    paths << PlayTrackFile(root, lesson);
    for (const QString& path : paths) {
        if (!QFile::exists(path)) continue;
        const QString target = to + QDir(from).relativeFilePath(path);
        QDir().mkpath(QFileInfo(target).absolutePath());
        QFile::copy(path, target);
    }
    return true;
}

TEST_F(FindSentenceTest, TheFirstReadTextAnsweredRightlyLeadsOnToTaskSix) {
    if (!copyLesson(QStringLiteral(VANTORIA_APP_DIR), env.rt->ProgramFolder, 1))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    setLesson(1, {});
    LoadLessonScripts(*env.rt);
    ASSERT_GT(env.rt->app.TextLineCount, 0);
    open();
    start();
    int asked = 0;
    while (form->Command2[0]->isEnabled()) {
        ++asked;
        EXPECT_EQ(form->MMControl1->Mode(), MMControl::ModePlaying) << "line " << form->CurrentLine;
        env.clock.Advance(300);
        answer(true);
        next();
    }
    EXPECT_GT(asked, 0);
    EXPECT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, kPassed);
    EXPECT_EQ(env.rt->app.StudyTask, 6);
}

TEST_F(FindSentenceTest, TheFirstPlayPlaysEachLineFromItsStretch) {
    if (!copyLesson(QStringLiteral(VANTORIA_APP_DIR), env.rt->ProgramFolder, 81))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    setLesson(81, {}, false);
    LoadLessonScripts(*env.rt);
    open();
    start();
    ASSERT_EQ(env.boxes.Count(), 0) << env.boxes.Last().text.toStdString();
    ASSERT_EQ(static_cast<int>(form->Positions.size()), env.rt->app.TextLineCount);
    int asked = 0;
    while (form->Command2[0]->isEnabled()) {
        ++asked;
        const LinePosition p = form->Positions[static_cast<size_t>(form->CurrentLine - 1)];
        env.clock.Advance(std::min(100, (p.To - p.From) / 2));
        EXPECT_GT(form->MMControl1->Position(), p.From) << "line " << form->CurrentLine;
        EXPECT_LT(form->MMControl1->Position(), p.To) << "line " << form->CurrentLine;
        env.clock.Advance(p.To - p.From);
        EXPECT_FALSE(form->Timer1->Enabled()) << "the stretch ended";
        EXPECT_NEAR(form->MMControl1->Position(), p.To, 50);
        answer(true);
        next();
    }
    EXPECT_GT(asked, 0);
    EXPECT_EQ(env.boxes.Count(), 0);
    EXPECT_TRUE(form->Command5->isEnabled());
}

} // namespace
} // namespace vt
