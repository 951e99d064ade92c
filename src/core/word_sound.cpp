#include "core/word_sound.h"

#include "core/data_paths.h"
#include "core/pinyin.h"
#include "core/runtime.h"
#include "core/speech.h"

namespace vt {

WordSound PlanWordSound(const QString& root, const QString& chinese, const QString& pinyin) {
    WordSound s;
    if (StripPunctuation(chinese).size() != 1) {
        s.BySyllables = true;
        s.Pinyin = StripPunctuation(pinyin);
        return s;
    }
    QString p = pinyin;
    if (!p.isEmpty() && p.back().isDigit()) {
        s.Tone = p.back();
        p = StripPunctuation(p);
        if (s.Tone == u"0" && !p.isEmpty()) p.back() = u'1';
    } else {
        s.Tone = QStringLiteral("0");
        p = StripPunctuation(p) + u'1';
    }
    s.File = SyllableSoundFile(root, p);
    return s;
}

void SayWord(Runtime& rt, const QString& chinese, const QString& pinyin) {
    const WordSound s = PlanWordSound(rt.app.AppPath, chinese, pinyin);
    if (s.BySyllables) {
        SpeakPinyin(rt, s.Pinyin);
        return;
    }
    rt.app.CurrentTone = s.Tone;
    PlayWave(rt, s.File, OwnerTag::None);
}

} // namespace vt
