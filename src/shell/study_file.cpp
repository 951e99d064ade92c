#include "shell/study_file.h"

#include "core/data_paths.h"
#include "core/runtime.h"

namespace vt {

namespace {
constexpr int kRecordLength = 4;
QString studyPath(const Runtime& rt) {
    return StudyFile(rt.app.AppPath);
}
} // namespace

void LoadStudyPosition(Runtime& rt) {
    const QByteArray rec = rt.files.ReadRecord(studyPath(rt), kRecordLength);
    rt.app.StudyLesson = ReadInt16LE(rec, 0);
    rt.app.StudyTask = ReadInt16LE(rec, 2);
    if (rt.app.StudyLesson == 0) {
        rt.app.StudyLesson = 1;
        if (rt.app.StudyTask == 0) rt.app.StudyTask = 1;
    }
}

bool SaveStudyPosition(Runtime& rt) {
    QByteArray rec(kRecordLength, '\0');
    WriteInt16LE(rec, 0, rt.app.StudyLesson);
    WriteInt16LE(rec, 2, rt.app.StudyTask);
    return rt.files.WriteRecord(studyPath(rt), kRecordLength, rec);
}

} // namespace vt
