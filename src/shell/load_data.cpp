#include "shell/load_data.h"

#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "core/speech.h"
#include "shell/begin.h"

namespace vt {

LoadData::LoadData(Runtime& runtime) : AppForm(runtime, kName, Border::None) {
    Move(0, 0, 5800, 5600);
    Label1 = Add<Label>(this, QStringLiteral("Label1"), 300, 300, 5200, 700);
    Label1->SetCaption(QStringLiteral("Loading the course, please wait...  正在加载课程"));
    Label1->SetFontSize(11);
    Label2 = Add<Label>(this, QStringLiteral("Label2"), 300, 1300, 5200, 330);
    Label2->SetCaption(QStringLiteral("Step 1: loading Chinese vocabulary"));
    ProgressBar2 = Add<ProgressBar>(this, QStringLiteral("ProgressBar2"), 300, 1700, 5200, 330);
    Label3 = Add<Label>(this, QStringLiteral("Label3"), 300, 2500, 5200, 330);
    Label3->SetCaption(QStringLiteral("Step 2: loading sample sentences"));
    ProgressBar3 = Add<ProgressBar>(this, QStringLiteral("ProgressBar3"), 300, 2900, 5200, 330);
    Label4 = Add<Label>(this, QStringLiteral("Label4"), 300, 3700, 5200, 330);
    Label4->SetCaption(QStringLiteral("Step 3: loading Chinese words (characters)"));
    ProgressBar4 = Add<ProgressBar>(this, QStringLiteral("ProgressBar4"), 300, 4100, 5200, 330);

    Timer1 = rt.NewTimer(this, QStringLiteral("Timer1"), 200);
    Timer1->OnTick = [this] { timer1Tick(); };
}

void LoadData::Form_Load() {
    Timer1->SetEnabled(true);
}

void LoadData::timer1Tick() {
    Timer1->SetEnabled(false);

    // The bars follow the stages. The character bar moves once per word, tens of thousands of
    // times: the bar itself repaints only when its fill visibly changes.
    LoadProgress progress;
    progress.Changed = [this, &progress](int bar) {
        ProgressBar* widget = bar == VocabularyBar ? ProgressBar2
                              : bar == SentenceBar ? ProgressBar3
                                                   : ProgressBar4;
        if (widget->Max() != progress.Max[bar]) widget->SetMax(progress.Max[bar]);
        widget->setValue(progress.Value[bar]);
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
