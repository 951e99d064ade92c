// Where the forms of a task's stack stand on the desktop, worked out by hand for a 1024 x 768
// screen (15360 x 11520 twips).
#include "shell/form_stacks.h"

#include <gtest/gtest.h>

using namespace vt;

TEST(FormStacks, TheStackIsCentredRaisedAndOnePixelApart) {
    // Main form 6000 x 5000 twips; above it Dictionary (2000) and Notepad (1500), below 1200.
    StackHeights h;
    h.screenWidth = 15360;
    h.screenHeight = 11520;
    h.mainWidth = 6000;
    h.mainHeight = 5000;
    h.dictionaryHeight = 2000;
    struct Row {
        const char* name;
        int notepad, below;
        StackLayout want; // left, main, Dictionary, Notepad and below tops
    } rows[] = {
        // 9700 high: (11520 - 9700) / 2 = 910, + 3500 above, - 260 = 4150.
        {"task 1: Notepad, Dictionary, main, below", 1500, 1200, {4680, 4150, 2135, 620, 9165}},
        // 7000 high: 2260 + 2000 - 260 = 4000.
        {"Dictionary only", 0, 0, {4680, 4000, 1985, 1970, 9015}},
        // 8001 high: 3519 / 2 = 1759.5 goes to the even 1760; + 2000 - 260 = 3500.
        {"a half below an even number", 0, 1001, {4680, 3500, 1485, 1470, 8515}},
        // 7999 high: 3521 / 2 = 1760.5 goes to the even 1760 as well.
        {"a half above an even number", 0, 999, {4680, 3500, 1485, 1470, 8515}},
        // 12500 high: the main form at -490 + 3500 - 260 = 2750 puts Notepad at -780; all
        // move down by 780.
        {"too high for the screen: it starts at the top edge",
         1500,
         4000,
         {4680, 3530, 1515, 0, 8545}},
    };
    for (const Row& r : rows) {
        h.notepadHeight = r.notepad;
        h.belowHeight = r.below;
        EXPECT_EQ(ComputeStack(h), r.want) << r.name;
    }
}
