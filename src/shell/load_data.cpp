#include "shell/load_data.h"

#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "shell/begin.h"

namespace vt {

LoadData::LoadData(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(0, 0, 5800, 5600);
    AddLabel(NAMED(Label1), {300, 300, 5200, 700},
             "Loading the course, please wait...  正在加载课程")
        ->SetFontSize(11);
    AddLabel(NAMED(Label2), {300, 1300, 5200, 330}, "Step 1: loading Chinese vocabulary");
    AddControl(NAMED(ProgressBar2), {300, 1700, 5200, 330});
    AddLabel(NAMED(Label3), {300, 2500, 5200, 330}, "Step 2: loading sample sentences");
    AddControl(NAMED(ProgressBar3), {300, 2900, 5200, 330});
    AddLabel(NAMED(Label4), {300, 3700, 5200, 330}, "Step 3: loading Chinese words (characters)");
    AddControl(NAMED(ProgressBar4), {300, 4100, 5200, 330});
    AddTimer(NAMED(Timer1), 200, [this] { timer1Tick(); });
}

void LoadData::Form_Load() {
    Timer1->SetEnabled(true);
}

void LoadData::timer1Tick() {
    Timer1->SetEnabled(false);

    // The bars follow the stages. The character bar moves once per word, tens of thousands of
    // times: the bar itself reaches the screen only when its fill visibly moves.
    LoadProgress progress;
    progress.Changed = [this, &progress](int bar) {
        ProgressBar* widget = bar == VocabularyBar ? ProgressBar2
                              : bar == SentenceBar ? ProgressBar3
                                                   : ProgressBar4;
        if (widget->Max() != progress.Max[bar]) widget->SetMax(progress.Max[bar]);
        widget->SetValue(progress.Value[bar]);
    };
    LoadTitles(rt, progress);
    LoadWordsAndSentences(rt, progress);
    BuildCharTable(rt, progress);

    // The greeting goes on sounding after the panel has gone.
    SpeakPinyin(rt, kGreeting);
    rt.forms.Unload(this);
}

void LoadData::Form_Unload(bool&) {
    if (Begin* begin = rt.forms.Get<Begin>()) begin->Timer2->SetEnabled(true);
}

} // namespace vt
