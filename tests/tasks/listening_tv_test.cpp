// The TV-play form on the virtual clock: a bad control file and missing files, the whole play with
// the mark following the sound, line by line with each line twice, single lines and the pictures,
// play and stop, and the sample play read aloud to its end.

#include "core/data_paths.h"
#include "core/knowledge_base.h"
#include "core/lesson_content.h"
#include "core/runtime.h"
#include "platform/list_view.h"
#include "platform/media_control.h"
#include "search/expressions_related.h"
#include "support/sound_fixtures.h"
#include "support/test_env.h"
#include "tasks/listening_tv.h"
#include "tasks/words_panel.h"

#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace vt {
namespace {

using test::TestEnv;

constexpr int kLesson = 81;
constexpr int kTrackMs = 4000;

struct ListeningTVTest : ::testing::Test {
    TestEnv env;
    QPointer<ListeningTV> form;

    QStringList lines() const {
        return {"你在哪儿工作？", "我在银行工作。", "好。",   "他是我的朋友，他也在银行工作。",
                "我们去吃饭吧。", "今天天气很好。", "走吧！", "明天见，朋友！"};
    }
    // Line r starts at 300 + 450 (r - 1) ms and lasts 400 ms.
    std::vector<LinePosition> stretches() const {
        std::vector<LinePosition> s;
        for (int32_t r = 0; r < 8; ++r)
            s.push_back({300 + r * 450, 300 + r * 450 + 400});
        return s;
    }
    void setLesson(int task, bool atStudyPosition = true) {
        AppState& app = env.rt->app;
        app.OpenLesson = kLesson;
        app.OpenTask = static_cast<int16_t>(task);
        app.StudyLesson = static_cast<int16_t>(atStudyPosition ? kLesson : kLesson + 1);
        app.StudyTask = static_cast<int16_t>(task);
        app.TextTitle = QStringLiteral("在银行");
        app.TextLines.Erase();
        for (const QString& l : lines())
            app.TextLines.Append(l);
        app.TextLineCount = static_cast<int16_t>(app.TextLines.Count());
    }
    // The track, the control file and pictures; false when MP3 can't be written here.
    bool writePlay(int pictures = 5) {
        const QByteArray mp3 = test::ToneMp3(440, kTrackMs);
        if (mp3.isEmpty()) return false;
        env.WriteFile(PlayTrackFile({}, kLesson), mp3);
        writePositions(PackLinePositions(stretches()));
        for (int i = 1; i <= pictures; ++i)
            env.WriteFile(PlayPictureFile({}, kLesson, i), "picture");
        return true;
    }
    void writePositions(const QByteArray& bytes) {
        env.WriteFile(PlayLinePositionsFile({}, kLesson), bytes);
    }
    void open() {
        form = env.rt->forms.Load<ListeningTV>();
        if (form) form->Show();
    }
    // Plays a choice of the list and moves on until ms after its start.
    void choose(int index, qint64 ms = 0) {
        form->Combo2->SetListIndex(index);
        env.clock.Advance(ms);
    }
    int64_t position() const { return form->MMControl1->Position(); }
};

TEST_F(ListeningTVTest, BadOrMissingFilesAreToldAndLoadStopsWhereItMust) {
    if (!writePlay()) GTEST_SKIP() << "no MP3 writer here";
    auto beyond = stretches();
    beyond[7].To = kTrackMs + 500;
    auto even = stretches();
    even[2].To = even[2].From;
    const QByteArray whole = PackLinePositions(stretches());
    const QString badRecord = QStringLiteral("Error: There is an error in control file!");
    const QString noTrack = PlayTrackFile({}, kLesson);
    struct Case {
        const char* name;
        QByteArray positions;
        QString removed;
        QString message; // empty: none
        bool delayed;    // told a moment after load
        size_t lines;    // stretches read
        bool textShown;
    };
    const Case cases[] = {
        {"end beyond the track", PackLinePositions(beyond), {}, badRecord, false, 0, false},
        {"start equal to end", PackLinePositions(even), {}, badRecord, false, 0, false},
        {"a broken last record", whole + QByteArray(5, '\x7f'), {}, {}, false, 8, true},
        {"no record", QByteArray(), {}, "File yeap.zvk is empty!", false, 0, true},
        {"no first picture", whole, PlayPictureFile({}, kLesson, 1), "Some file is missed!", true,
         0, false},
        {"no track", whole, noTrack, "Fsil to find the sound file for the text.", true, 0, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_TRUE(writePlay());
        writePositions(c.positions);
        if (!c.removed.isEmpty()) QFile::remove(env.Path(c.removed));
        setLesson(1, false);
        env.rt->forms.Load<WordsPanel>();
        open();
        if (c.delayed) {
            EXPECT_EQ(env.boxes.Count(), 0);
            env.clock.Advance(800);
        }
        if (c.message.isEmpty()) {
            EXPECT_EQ(env.boxes.Count(), 0);
        } else {
            ASSERT_EQ(env.boxes.Count(), 1);
            EXPECT_EQ(env.boxes.Last().text, c.message);
            EXPECT_EQ(env.boxes.Last().title, "Warning");
        }
        EXPECT_EQ(form->LinePositions.size(), c.lines);
        EXPECT_EQ(form->Text1->Text().contains("8) 明天见"), c.textShown);
        if (c.removed == noTrack) {
            EXPECT_FALSE(form->Combo2->isEnabled());
            EXPECT_FALSE(form->Text1->isEnabled());
            EXPECT_FALSE(env.rt->forms.Get<WordsPanel>()->ListView1->isEnabled());
        }
        if (c.textShown) {
            // A line can be chosen; without its stretch nothing sounds.
            choose(5, 100);
            EXPECT_EQ(form->MMControl1->Mode() == MMControl::ModePlaying, c.lines > 0);
        }
        env.boxes.Clear();
        ASSERT_TRUE(env.rt->forms.Unload(form));
        env.rt->forms.Unload<WordsPanel>();
    }
}

TEST_F(ListeningTVTest, TheWholePlayKeepsTheMarkAndThePicturesWithTheSound) {
    if (!writePlay(5)) GTEST_SKIP() << "no MP3 writer here";
    setLesson(1, false);
    open();
    EXPECT_NEAR(form->PlayLength, kTrackMs, 60);
    EXPECT_EQ(form->Combo2->count(), 3 + 8);
    EXPECT_EQ(form->Combo2->itemText(6), "4. 他是我的朋友，他......");
    EXPECT_EQ(form->PictureCount, 5);
    EXPECT_EQ(form->Timer2->Interval(), PictureInterval(form->PlayLength, 5));
    EXPECT_FALSE(form->Command5->isEnabled());

    choose(kPlayWhole, 250);
    EXPECT_EQ(form->Text1->SelLength(), 0) << "nothing is marked before the first line";
    EXPECT_EQ(form->Command5->Caption(), "Stop");
    EXPECT_FALSE(form->Combo2->isEnabled());
    for (int r = 1; r <= 8; ++r) {
        const int64_t from = stretches()[size_t(r - 1)].From;
        env.clock.Advance(from + 150 - position());
        EXPECT_EQ(form->Text1->SelText(), lines()[r - 1]) << "at " << position() << " ms";
    }
    EXPECT_TRUE(QRegularExpression(R"(^3\.\d / 4\.\d$)").match(form->Label1->Caption()).hasMatch())
        << form->Label1->Caption().toStdString();
    EXPECT_EQ(form->PictureIndex, 4) << "a picture a little over every second";

    env.clock.Advance(kTrackMs + 200 - position());
    EXPECT_EQ(form->Command5->Caption(), "Play");
    EXPECT_TRUE(form->Combo2->isEnabled());
    EXPECT_FALSE(form->Timer2->Enabled());
    EXPECT_FALSE(form->Timer3->Enabled());
    EXPECT_EQ(position(), 0);
}

TEST_F(ListeningTVTest, LineByLinePlaysEachLineTwiceHalfASecondApart) {
    if (!writePlay()) GTEST_SKIP() << "no MP3 writer here";
    setLesson(1, false);
    open();
    choose(kPlayLineByLine);
    std::vector<std::pair<int, int64_t>> starts; // line, time
    bool wasPlaying = false;
    for (int t = 0; t < 20000 && form->Command5->Caption() == "Stop"; t += 10) {
        const bool playing = form->MMControl1->Mode() == MMControl::ModePlaying;
        if (playing && !wasPlaying) {
            starts.emplace_back(form->CurrentLine, env.clock.Elapsed());
            EXPECT_EQ(form->Text1->SelText(), lines()[form->CurrentLine - 1]);
        }
        wasPlaying = playing;
        env.clock.Advance(10);
    }
    ASSERT_EQ(starts.size(), 16u);
    for (size_t i = 0; i < starts.size(); ++i) {
        EXPECT_EQ(starts[i].first, int(i / 2) + 1);
        // 400 ms of a line, then the 500 ms pause.
        if (i > 0) {
            EXPECT_NEAR(starts[i].second - starts[i - 1].second, 900, 60);
        }
    }
    EXPECT_TRUE(form->Combo2->isEnabled());
    EXPECT_EQ(form->Text1->SelLength(), 0);
}

TEST_F(ListeningTVTest, StoppingRewindsTheSoundAndLeavesThePicture) {
    if (!writePlay(5)) GTEST_SKIP() << "no MP3 writer here";
    setLesson(1, false);
    open();
    for (int index : {kPlayWhole, kPlayLineByLine}) {
        SCOPED_TRACE(index);
        choose(index, 1500);
        const int16_t picture = form->PictureIndex;
        EXPECT_EQ(picture, 2);
        form->Command5->click();
        EXPECT_EQ(form->Command5->Caption(), "Play");
        EXPECT_EQ(position(), 0);
        env.clock.Advance(3000);
        EXPECT_EQ(form->PictureIndex, picture);
        EXPECT_EQ(position(), 0);
        form->Command5->click(); // and again from the start, with the first picture
        EXPECT_EQ(form->PictureIndex, 1);
        EXPECT_EQ(form->MMControl1->Mode(), MMControl::ModePlaying);
        form->Command5->click();
    }
}

TEST_F(ListeningTVTest, ASingleLinePlaysAloneWhileThePicturesGoOn) {
    if (!writePlay(5)) GTEST_SKIP() << "no MP3 writer here";
    setLesson(1, false);
    open();
    choose(kPlayFirstLine + 1, 100); // line 2
    EXPECT_EQ(form->Text1->SelText(), lines()[1]);
    EXPECT_NEAR(position(), stretches()[1].From + 100, 30);
    EXPECT_TRUE(form->Command2->isEnabled());
    EXPECT_TRUE(form->Command3->isEnabled());
    env.clock.Advance(400);
    EXPECT_EQ(form->Command5->Caption(), "Play");
    EXPECT_TRUE(form->Timer2->Enabled()) << "the pictures go on after the line";

    // A click on the picture shows the next one and starts its time again.
    env.clock.Advance(form->Timer2->Interval() - 600);
    Q_EMIT form->Image1->Click();
    EXPECT_EQ(form->PictureIndex, 2);
    env.clock.Advance(form->Timer2->Interval() - 100);
    EXPECT_EQ(form->PictureIndex, 2);
    env.clock.Advance(100);
    EXPECT_EQ(form->PictureIndex, 3);

    // ">>" to the last line, then "<<".
    form->Combo2->SetListIndex(form->Combo2->count() - 2);
    form->Command3->click();
    EXPECT_EQ(form->CurrentLine, 8);
    EXPECT_FALSE(form->Command3->isEnabled());
    form->Command2->click();
    EXPECT_EQ(form->CurrentLine, 7);
}

TEST_F(ListeningTVTest, TheWordPanelMarksItsWordInThePlay) {
    if (!writePlay()) GTEST_SKIP() << "no MP3 writer here";
    setLesson(1, false);
    AppState& app = env.rt->app;
    app.LessonWords.Erase();
    app.LessonWords.Append(
        LessonWord{QStringLiteral("银行"), QStringLiteral("bank"), QStringLiteral("yin2.hang2")});
    app.LessonWordRows = 1;
    open();
    auto* panel = env.rt->forms.Load<WordsPanel>();
    panel->ListView1->ItemClick(1);
    EXPECT_EQ(form->Text1->SelText(), "银行");
    EXPECT_EQ(form->Text1->SelStart(), form->Text1->Text().indexOf("银行"));
}

// --- The sample play ------------------------------------------------------------------------

TEST_F(ListeningTVTest, TheFirstPlayIsReadAloudToItsEnd) {
    const QString course = QStringLiteral(VANTORIA_APP_DIR);
    const QString track = PlayTrackFile(course + "/", kLesson);
    if (!QFile::exists(track) || !env.CopyCourseScripts(course) ||
        !env.CopyCourseFolder(course, "Phonetic Symbols") ||
        !env.CopyCourseFolder(course, "Lessons/Picture/Lesson_81"))
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    env.WriteFile(PlayTrackFile({}, kLesson), {});
    QFile::remove(env.Path(PlayTrackFile({}, kLesson)));
    ASSERT_TRUE(QFile::copy(track, env.Path(PlayTrackFile({}, kLesson))));
    LoadProgress progress;
    LoadKnowledgeBase(*env.rt, progress);
    AppState& app = env.rt->app;
    app.OpenLesson = app.StudyLesson = kLesson;
    app.OpenTask = app.StudyTask = 6;
    LoadLessonScripts(*env.rt);
    ASSERT_GT(app.TextLineCount, 0);
    env.rt->forms.Load<ExpressionsRelated>();
    open();
    ASSERT_EQ(env.boxes.Count(), 0);
    ASSERT_EQ(form->LinePositions.size(), size_t(app.TextLineCount));
    EXPECT_EQ(form->Label1->Caption(), "Step 1 / 2");

    form->Command5->click();
    int words = 0;
    int16_t lastLine = 0;
    QString lastWord;
    for (int t = 0; form && t < 30 * 60 * 1000; t += 100) {
        if (form->ReadingStep == 1 && form->Text1->SelText() != lastWord) {
            lastWord = form->Text1->SelText();
            ++words;
        }
        if (form->ReadingStep == 2) lastLine = form->CurrentLine;
        env.clock.Advance(100);
    }
    EXPECT_FALSE(form) << "the form closes itself";
    EXPECT_GT(words, 30);
    EXPECT_EQ(lastLine, app.TextLineCount);
    ASSERT_EQ(env.boxes.Count(), 1);
    EXPECT_EQ(env.boxes.Last().text, "You have finished task 6. Let's go on to do task 7.");
    EXPECT_EQ(app.StudyLesson, kLesson);
    EXPECT_EQ(app.StudyTask, 7);
    EXPECT_EQ(app.OpenTask, 0);
}

} // namespace
} // namespace vt
