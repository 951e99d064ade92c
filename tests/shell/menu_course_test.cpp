// The lesson menu on the sample course, reached through the whole start chain as a learner starts
// the program. Skipped when the sample course has not been built beside the program.
#include "shell/begin.h"
#include "shell/begin1.h"
#include "shell/study.h"
#include "support/events.h"
#include "support/test_env.h"

#include <gtest/gtest.h>

using namespace vt;
using vt::test::TestEnv;

namespace {

QString taskList(const Begin1* m) {
    QString s;
    for (size_t i = 0; i < 8; ++i) {
        const unsigned c = m->Label2[i]->ForeColor();
        s += c == kTaskCurrent ? u'r' : c == kTaskDone ? u'g' : u'b';
        s += m->Command1[i]->isEnabled() ? u'+' : u'-';
    }
    return s;
}

} // namespace

TEST(LessonMenuOnTheCourse, AFirstStartOpensLessonOneAndTheMenuKeepsItsChoice) {
    TestEnv env;
    if (!env.StartOnSampleCourse())
        GTEST_SKIP() << "the sample course is not built in " VANTORIA_APP_DIR;
    Runtime& rt = *env.rt;

    Begin* begin = rt.forms.Get<Begin>();
    Begin1* menu = rt.forms.Get<Begin1>();
    ASSERT_TRUE(begin && menu);
    EXPECT_TRUE(menu->Visible());
    EXPECT_EQ(menu->Left(), begin->Left() + Begin::PanelLeft);
    EXPECT_EQ(menu->Top(), begin->Top() + Begin::PanelTop);
    ASSERT_EQ(menu->Combo1->count(), kLessonCount);
    EXPECT_EQ(menu->Combo1->ListIndex(), 0);
    EXPECT_EQ(menu->Combo1->itemText(0), " 1 - " + rt.app.TitleList[1]);
    EXPECT_EQ(taskList(menu), "r+b-b-b-b-b-b-b+"); // the last pair is the additional page
    EXPECT_EQ(menu->focusWidget(), menu->Command1[0]);
    EXPECT_GT(rt.app.LessonWordRows, 0);
    EXPECT_GT(rt.app.TextLineCount, 0);
    EXPECT_EQ(rt.app.TextTitle, rt.app.TextLines[1]);

    menu->Combo1->SetListIndex(80);
    EXPECT_EQ(rt.app.OpenLesson, 81);
    EXPECT_FALSE(rt.app.TextTitle.isEmpty());
    EXPECT_NE(rt.app.TextTitle, rt.app.TextLines[1]) << "a TV play's title is not one of its lines";
    EXPECT_EQ(taskList(menu), "b+b-b-b-b-b-b-b+");

    // A lit button goes out when the mouse moves on into the menu.
    test::MouseMoveOver(begin->Image3[2]);
    EXPECT_EQ(begin->Image3[2]->PictureName, u"hover");
    test::MouseMoveOver(menu->Client(), {3, 3});
    EXPECT_EQ(begin->Image3[2]->PictureName, u"neutral");

    // Over to the About panel and back: the same menu, as it was left.
    test::Click(begin->Image3[4]);
    EXPECT_FALSE(menu->Visible());
    test::Click(begin->Image3[1]);
    ASSERT_EQ(rt.forms.Get<Begin1>(), menu);
    EXPECT_TRUE(menu->Visible());
    EXPECT_EQ(menu->Combo1->ListIndex(), 80);
    EXPECT_EQ(rt.app.OpenLesson, 81);
    EXPECT_EQ(taskList(menu), "b+b-b-b-b-b-b-b+");
}
