// Hostile sound files: the WAV header check and the whole decoding path behind it (the decoder
// library on memory, conversion to the output's format) must reject or decode any bytes without
// a crash, a leak or undefined behaviour.
#include "platform/sound_decoder.h"

#include <QByteArray>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto* bytes = reinterpret_cast<const char*>(data);
    const QString why = vt::CheckWavHeader(bytes, size);
    const QByteArray file = QByteArray::fromRawData(bytes, qsizetype(size));
    QString error;
    auto clip = vt::DecodeSound(file, 22050, 2, &error);
    // Accepted WAV headers are the only WAV files that may decode.
    if (clip && vt::LooksLikeWav(bytes, size) && !why.isEmpty()) __builtin_trap();
    if (clip && clip->samples.size() != size_t(clip->Frames()) * 2) __builtin_trap();
    return 0;
}
