// A learner's first lesson on the sample course, from the program's start to the next lesson.
// The program starts through its whole start chain; each task is opened from the lesson menu as
// a learner opens it, worked through the task's own controls and keys, and closed, and the menu
// it comes back to shows the next task in red. What a learner knows (the meaning of a word, the
// sentence heard) the learner here reads from the lesson as the program loaded it.
// Skipped when the sample course has not been built beside the program.
#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "platform/files.h"
#include "search/dictionary.h"
#include "shell/begin.h"
#include "shell/begin1.h"
#include "shell/start_or_not.h"
#include "shell/study.h"
#include "support/events.h"
#include "support/test_env.h"
#include "tasks/exercise3.h"
#include "tasks/find_sentence.h"
#include "tasks/notepad.h"
#include "tasks/question.h"
#include "tasks/result1.h"
#include "tasks/text.h"
#include "tasks/typing.h"
#include "tasks/vocabulary.h"
#include "tasks/words_panel.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>

using namespace vt;
using vt::test::TestEnv;

namespace {

// The task list as the learner sees it: per task r(ed), g(rey) or b(lack), and + for a button
// that opens, - for one that does not. The additional page is left out.
QString taskList(const Begin1* m) {
    QString s;
    for (size_t i = 0; i < kTaskCount; ++i) {
        const unsigned c = m->Label2[i]->ForeColor();
        s += c == kTaskCurrent ? u'r' : c == kTaskDone ? u'g' : u'b';
        s += m->Command1[i]->isEnabled() ? u'+' : u'-';
    }
    return s;
}

// The letters a learner types for a syllable shown with tone marks: the marks dropped, ü as v.
QString lettersOf(const QString& marked) {
    QString letters;
    const QString plain = marked.normalized(QString::NormalizationForm_D);
    for (qsizetype i = 0; i < plain.size(); ++i) {
        const QChar c = plain[i];
        if (c == u'u' && i + 1 < plain.size() && plain[i + 1] == QChar(0x0308))
            letters += u'v';
        else if (c.isLetter())
            letters += c.toLower();
    }
    return letters;
}

// The number in a page line " 1 中  2 钟 " that stands before the character; 0 when it is not on
// the page.
int numberOn(const QString& pageLine, const QString& character) {
    static const QRegularExpression item(QStringLiteral("(\\d) (\\S)"));
    for (const QRegularExpressionMatch& m : item.globalMatch(pageLine))
        if (m.captured(2) == character) return m.captured(1).toInt();
    return 0;
}

class WholeLesson : public ::testing::Test {
protected:
    void SetUp() override {
        const QString course = QStringLiteral(VANTORIA_APP_DIR);
        if (!env.CopyCourseScripts(course) ||
            !env.CopyCourseFolder(course, "Lessons/Sound/Lesson_1") ||
            !env.CopyCourseFolder(course, "Sound"))
            GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
        // The syllable recordings are only read: the built course's own folder serves, which
        // spares copying some thousands of files.
        ASSERT_TRUE(QFile::link(course + "/Phonetic Symbols", env.Path("Phonetic Symbols")));
        startProgram();
    }

    Runtime& rt() { return *env.rt; }
    AppState& app() { return env.rt->app; }

    // The start chain as the program runs it, up to the lesson menu.
    void startProgram() {
        rt().forms.Load<StartOrNot>();
        env.clock.Advance(100 + 200 + 200 + 200); // desktop, main screen, loading, menu
        menu = rt().forms.Get<Begin1>();
        ASSERT_TRUE(menu && menu->Visible());
    }

    // Opens task n from the menu with a click on its button; the task's form is then up and the
    // menu gone.
    template <class F> F* open(int task) {
        CommandButton* button = menu->Command1[static_cast<size_t>(task - 1)];
        EXPECT_TRUE(button->isEnabled()) << "task " << task;
        test::Click(button);
        F* form = rt().forms.Get<F>();
        EXPECT_TRUE(form && form->Visible()) << "task " << task;
        EXPECT_FALSE(menu->Visible());
        return form;
    }

    // Lets the clock run in steps of 100 ms until done() holds; false when it never does.
    bool waitUntil(const std::function<bool()>& done, int maxMs) {
        for (int waited = 0; !done(); waited += 100) {
            if (waited >= maxMs) return false;
            env.clock.Advance(100);
        }
        return true;
    }

    // The box shown last, or nothing.
    QString lastBox() const { return env.boxes.Count() ? env.boxes.Last().text : QString(); }

    // Back in the menu after a task: task `next` of lesson 1 is the red one, and the study
    // position stored says the same.
    void expectBackInMenuAt(int next) {
        EXPECT_TRUE(menu->Visible());
        EXPECT_EQ(app().OpenTask, 0);
        EXPECT_EQ(app().StudyLesson, 1);
        EXPECT_EQ(app().StudyTask, next);
        QString expected;
        for (int t = 1; t <= kTaskCount; ++t)
            expected += t < next ? "g+" : t == next ? "r+" : "b-";
        EXPECT_EQ(taskList(menu), expected);
        EXPECT_EQ(stored(), PackInt16LE({1, static_cast<int16_t>(next)}));
    }

    // The bytes of Study.zvk as stored.
    QByteArray stored() {
        QFile f(env.Path(QStringLiteral("Study.zvk")));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    // The lesson's word row that the Chinese shown stands for.
    const LessonWord* wordShown(const QString& chinese) {
        for (int i = 1; i <= app().LessonWordRows; ++i)
            if (app().LessonWords[i].Chinese == chinese) return &app().LessonWords[i];
        return nullptr;
    }

    void translateTheText();
    void typeTheNewCharacters();
    void matchTheVocabulary();
    void fillTheBlanks();
    void findTheSentences();
    void readAloud();
    void answerTheQuestions(bool rightly);

    TestEnv env;
    Begin1* menu = nullptr;
};

// Task 1: sentences heard, a translation written in the notes above the text; leaving with too
// little written asks to stay, leaving with a translation moves on.
void WholeLesson::translateTheText() {
    Text* text = open<Text>(1);
    ASSERT_TRUE(text);
    auto* notes = rt().forms.Get<Notepad>();
    ASSERT_TRUE(notes && notes->Visible());
    ASSERT_TRUE(rt().forms.Get<WordsPanel>());
    EXPECT_EQ(text->Caption(), "Lesson 1");
    EXPECT_TRUE(text->Command4->isEnabled()) << "the recordings match the lines";

    test::Click(text->Command4); // ">>": the first sentence, then the second
    test::Click(text->Command4);
    EXPECT_EQ(text->Label1->Caption(), QStringLiteral("2 / %1").arg(app().TextLineCount));
    EXPECT_TRUE(env.sound->MMControl1->FileName().endsWith("Lesson_1/2.wav"));
    EXPECT_EQ(text->Text1->SelText(), Trim(app().TextLines[2]));

    env.boxes.Answer(Mb::OK); // nothing written yet: the learner stays
    test::PressKey(text->Client(), Qt::Key_Escape);
    ASSERT_EQ(rt().forms.Get<Text>(), text);
    EXPECT_EQ(env.boxes.Last().title, "Advice");

    QTest::keyClicks(notes->Text1,
                     "Li Ming: Teacher Wang, hello! Teacher Wang: Hello! How are you? Li Ming: I "
                     "am very well, thank you. And you? Teacher Wang: I am also very well. Li "
                     "Ming: Who is she? Teacher Wang: She is Zhang Wen, she is my student. Zhang "
                     "Wen: Hello! Are you a student too? Li Ming: Yes, I am also a student of "
                     "Teacher Wang. Zhang Wen: Teacher Wang, do we have a lesson tomorrow? "
                     "Teacher Wang: We have no class tomorrow. Zhang Wen: Thank you, teacher! "
                     "Goodbye, teacher! Teacher Wang: Goodbye!");
    const int boxes = env.boxes.Count();
    test::Click(text->Command1);
    EXPECT_EQ(env.boxes.Count(), boxes) << lastBox().toStdString();
    EXPECT_EQ(rt().forms.Get<Text>(), nullptr);
    EXPECT_EQ(rt().forms.Get<Notepad>(), nullptr);
    QFile saved(TranslationNotesFile(app().AppPath, 1));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(saved.readAll()).contains("Zhang Wen: Thank you, teacher!"));
}

// Task 2: each character shown is typed by the letters of its Pinyin and picked from the list by
// its number, paging on when it is not on the first page.
void WholeLesson::typeTheNewCharacters() {
    Typing* typing = open<Typing>(2);
    ASSERT_TRUE(typing);
    QWidget* keys = typing->Client();
    const auto press = [keys](int key, const QString& text) { test::PressKey(keys, key, text); };
    const int count = typing->Progress().TargetCount;
    ASSERT_GT(count, 10);
    for (int typed = 0; typed < count; ++typed) {
        const QString target = typing->Label1->Caption();
        for (QChar c : lettersOf(typing->Label3->Caption()))
            press(Qt::Key_A + (c.unicode() - u'a'), QString(c));
        int number = numberOn(typing->Label5->Caption(), target);
        for (int page = 0; number == 0 && page < 20; ++page) {
            press(Qt::Key_Equal, QStringLiteral("="));
            number = numberOn(typing->Label5->Caption(), target);
        }
        ASSERT_GT(number, 0) << target.toStdString() << " is not offered for "
                             << typing->Label3->Caption().toStdString();
        press(Qt::Key_0 + number, QString::number(number));
        ASSERT_EQ(typing->Label4->Caption(), target);
        env.clock.Advance(9 * 400); // the verdict blinks, the next character comes
    }
    EXPECT_EQ(lastBox(), "You have finished task 2. Let's go on to do task 3.");
    env.clock.Advance(200); // OK: the form goes a moment later
    EXPECT_EQ(rt().forms.Get<Typing>(), nullptr);
}

// Task 3: Start, then for each word shown the line that reads one of its meanings.
void WholeLesson::matchTheVocabulary() {
    Vocabulary* vocabulary = open<Vocabulary>(3);
    ASSERT_TRUE(vocabulary);
    test::Click(vocabulary->Command2);
    // The dictionary above shows the word's entry, but not its meanings: they are the answer.
    const auto* dictionary = rt().forms.Get<Dictionary>();
    ASSERT_TRUE(dictionary && dictionary->Visible());
    EXPECT_GT(dictionary->ListView1->Count(), 0);
    EXPECT_TRUE(dictionary->ListView1->isColumnHidden(2));
    for (int asked = 0; asked < app().LessonWordRows; ++asked) {
        const LessonWord* word = wordShown(vocabulary->Label1->Caption());
        ASSERT_TRUE(word) << vocabulary->Label1->Caption().toStdString();
        const QStringList meanings = word->Meaning.split(u';');
        Label* line = nullptr;
        for (Label* l : vocabulary->Label2)
            for (const QString& m : meanings)
                if (l->isVisible() && Trim(l->Caption()) == Trim(m)) line = l;
        ASSERT_TRUE(line) << "no line means " << word->Chinese.toStdString();
        test::Click(line);
        EXPECT_EQ(vocabulary->Label4[0]->Caption().toInt(), asked + 1) << "counted right";
        // The right lines stay red two seconds for each meaning.
        env.clock.Advance(2000 * static_cast<int>(meanings.size()));
    }
    EXPECT_EQ(lastBox(), "You have finished task 3. Let's go on to do task 4.");
    EXPECT_EQ(rt().forms.Get<Vocabulary>(), nullptr);
}

// Task 4: Start, each blank filled with its character from the four at the bottom, Done.
void WholeLesson::fillTheBlanks() {
    Exercise3* blanks = open<Exercise3>(4);
    ASSERT_TRUE(blanks);
    EXPECT_FALSE(rt().forms.Get<Dictionary>()->ListView1->isColumnHidden(2));
    ASSERT_TRUE(rt().forms.Get<Result1>());
    test::Click(blanks->Command4);
    ASSERT_GT(app().BlankCount, 0);
    for (int n = 1; n <= app().BlankCount; ++n) {
        ASSERT_EQ(blanks->Combo1->ListIndex(), n - 1) << "filling moves on to the next blank";
        const QString& character = app().Blanks[n].Character;
        Label* offered = nullptr;
        for (int i = 1; i <= 4; ++i)
            if (blanks->Label1[static_cast<size_t>(i)]->Caption() == character)
                offered = blanks->Label1[static_cast<size_t>(i)];
        ASSERT_TRUE(offered) << "blank " << n << " does not offer " << character.toStdString();
        test::Click(offered);
    }
    env.boxes.Answer(Mb::Yes); // "Are you sure?"
    test::Click(blanks->Command4);
    EXPECT_EQ(lastBox(), "You have finished task 4. Let's  go on to do task 5.");
    EXPECT_EQ(rt().forms.Get<Exercise3>(), nullptr);
    EXPECT_EQ(rt().forms.Get<Result1>(), nullptr);
}

// Task 5: Start, and for each sentence heard the version that reads as the lesson has it, then
// Next.
void WholeLesson::findTheSentences() {
    FindSentence* find = open<FindSentence>(5);
    ASSERT_TRUE(find);
    QStringList lines;
    for (int i = 1; i <= app().TextLineCount; ++i)
        lines << Trim(app().TextLines[i]);
    test::Click(find->Command5);
    int asked = 0;
    while (rt().forms.Get<FindSentence>() && find->Command2[0]->isEnabled()) {
        ASSERT_LT(++asked, 100);
        EXPECT_TRUE(find->MMControl1->FileName().endsWith(
            QStringLiteral("Lesson_1/%1.wav").arg(find->CurrentLine)));
        int right = -1;
        for (int i = 0; i < 3; ++i)
            if (lines.contains(find->Text1[static_cast<size_t>(i)]->Text())) right = i;
        ASSERT_GE(right, 0) << "no version reads as the lesson";
        test::Click(find->Command2[static_cast<size_t>(right)]);
        EXPECT_EQ(find->Label2->Caption(), QStringLiteral("Right  正确!"));
        test::Click(find->Command4);
    }
    EXPECT_GT(asked, 5);
    EXPECT_EQ(lastBox(), "You have finished task 5. Let's go on to do task 6.");
    EXPECT_EQ(rt().forms.Get<FindSentence>(), nullptr);
}

// Task 6: Start, and the reading runs by itself word by word, then sentence by sentence, to its
// end.
void WholeLesson::readAloud() {
    Text* text = open<Text>(6);
    ASSERT_TRUE(text);
    test::Click(text->Command5);
    EXPECT_EQ(text->Command5->Caption(), "Stop");
    ASSERT_TRUE(waitUntil([this] { return rt().forms.Get<Text>() == nullptr; }, 30 * 60 * 1000))
        << "the reading stopped at step " << text->ReadingStep << ", place " << text->WalkPosition;
    EXPECT_EQ(lastBox(), "You have finished task 6. Let's go on to do task 7.");
}

// Task 7, one round: each question answered by ticking boxes and OK, then Next. Rightly: exactly
// the right options; otherwise one wrong option alone.
void WholeLesson::answerTheQuestions(bool rightly) {
    auto* questions = rt().forms.Get<Question>();
    ASSERT_TRUE(questions);
    for (int q = 1; q <= questions->QuestionCount; ++q) {
        ASSERT_EQ(questions->CurrentQuestion, q);
        const QuestionEntry& asked = questions->Questions[q];
        EXPECT_EQ(questions->Text1->Text(), asked.Texts[0]);
        bool ticked = false;
        for (int i = 0; i < std::min<int>(asked.AnswerCount, 4); ++i) {
            const bool right = asked.Right[i + 1] == 1;
            if (rightly ? right : !right && !ticked) {
                CheckBox* box = questions->Check2[static_cast<size_t>(i)];
                test::Click(box, box->rect().center());
                ticked = true;
            }
        }
        ASSERT_TRUE(ticked && questions->Command2->isEnabled()) << "question " << q;
        test::Click(questions->Command2);         // OK
        if (q == questions->QuestionCount) break; // the round ends: a box tells what follows
        EXPECT_EQ(questions->Label3[2]->Caption(),
                  rightly ? QStringLiteral("Right  正确") : QStringLiteral("Wrong  不对"));
        EXPECT_EQ(questions->Command2->Caption(), "Next");
        test::Click(questions->Command2);
    }
}

TEST_F(WholeLesson, TheFirstLessonIsStudiedTaskByTaskToTheNextLesson) {
    EXPECT_EQ(menu->Combo1->ListIndex(), 0);
    EXPECT_EQ(taskList(menu), "r+b-b-b-b-b-b-");
    EXPECT_EQ(menu->focusWidget(), menu->Command1[0]);

    translateTheText();
    expectBackInMenuAt(2);
    EXPECT_EQ(menu->focusWidget(), menu->Command1[1]);
    typeTheNewCharacters();
    expectBackInMenuAt(3);
    matchTheVocabulary();
    expectBackInMenuAt(4);
    fillTheBlanks();
    expectBackInMenuAt(5);
    findTheSentences();
    expectBackInMenuAt(6);
    readAloud();
    expectBackInMenuAt(7);
    EXPECT_EQ(menu->focusWidget(), menu->Command1[6]);

    // A first round with no right answer starts over at question 1; a second one finishes the
    // lesson and moves the study position on to the next lesson.
    ASSERT_TRUE(open<Question>(7));
    answerTheQuestions(false);
    EXPECT_EQ(lastBox(), "You haven't correctly answer all the questions. Do task 7 again, please");
    EXPECT_EQ(app().StudyTask, 7);
    answerTheQuestions(true);
    EXPECT_TRUE(lastBox().startsWith("Great! You have finished studying lesson 1."));
    EXPECT_EQ(rt().forms.Get<Question>(), nullptr);
    EXPECT_EQ(stored(), PackInt16LE({2, 1}));
    EXPECT_EQ(app().StudyLesson, 2);
    EXPECT_EQ(app().StudyTask, 1);

    // The menu keeps the lesson just finished, all its tasks done; lesson 2 is a choice away.
    ASSERT_TRUE(menu->Visible());
    EXPECT_EQ(menu->Combo1->ListIndex(), 0);
    EXPECT_EQ(taskList(menu), "g+g+g+g+g+g+g+");
    menu->Combo1->SetListIndex(1);
    EXPECT_EQ(app().OpenLesson, 2);
    EXPECT_EQ(taskList(menu), "r+b-b-b-b-b-b-");
    EXPECT_EQ(menu->focusWidget(), menu->Command1[0]);

    // The next day the program starts again on the same folder, at lesson 2, task 1.
    rt().forms.DestroyAll();
    rt().app = AppState();
    startProgram();
    EXPECT_EQ(app().StudyLesson, 2);
    EXPECT_EQ(menu->Combo1->ListIndex(), 1);
    EXPECT_EQ(app().OpenLesson, 2);
    EXPECT_EQ(taskList(menu), "r+b-b-b-b-b-b-");
    EXPECT_EQ(menu->focusWidget(), menu->Command1[0]);
}

} // namespace
