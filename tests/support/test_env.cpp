#include "support/test_env.h"

#include "program/form_registry.h"
#include "shell/start_or_not.h"
#include "shell/study_file.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace vt::test {

TestEnv::TestEnv() {
    rt = std::make_unique<Runtime>(clock, boxes, random, files, screen);
    rt->ProgramFolder = dir.path() + u'/';
    rt->app.AppPath = rt->ProgramFolder;
    sound = SoundSystem::CreateVirtual(clock);
    sound->Attach(*rt);
    RegisterProgramForms(rt->forms);
}

TestEnv::~TestEnv() {
    // The forms go before the sound their players stand on, and both before the runtime.
    rt->forms.DestroyAll();
    sound.reset();
    rt.reset();
    VirtualClock::DeliverPosted();
}

void TestEnv::WriteFile(const QString& relative, const QByteArray& bytes) {
    QString p = rt->app.AppPath + relative;
    p.replace(u'\\', u'/');
    QDir().mkpath(QFileInfo(p).absolutePath());
    QFile f(p);
    if (f.open(QIODevice::WriteOnly)) f.write(bytes);
}

QByteArray TestEnv::Read(const QString& relative) const {
    return files.ReadAll(Path(relative)).value_or(QByteArray());
}

bool TestEnv::StartOnSampleCourse(int lesson, int task) {
    if (!CopyCourseScripts(QStringLiteral(VANTORIA_APP_DIR))) return false;
    if (lesson > 0) {
        rt->app.StudyLesson = static_cast<int16_t>(lesson);
        rt->app.StudyTask = static_cast<int16_t>(task);
        SaveStudyPosition(*rt);
    }
    rt->forms.Load<StartOrNot>();
    clock.Advance(100 + 200 + 200 + 200); // desktop, main screen, loading, menu
    return true;
}

bool TestEnv::CopyCourseScripts(const QString& from) {
    if (!QFile::exists(from + "/Lessons/Title.zvk")) return false;
    const QString to = rt->ProgramFolder;
    QDirIterator it(from + "/Lessons", QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (!path.endsWith(".zvk", Qt::CaseInsensitive)) continue;
        const QString target = to + QDir(from).relativeFilePath(path);
        QDir().mkpath(QFileInfo(target).absolutePath());
        QFile::copy(path, target);
    }
    return true;
}

bool TestEnv::CopyCourseFolder(const QString& from, const QString& folder) {
    if (!QDir(from + "/" + folder).exists()) return false;
    const QString to = rt->ProgramFolder;
    QDirIterator it(from + "/" + folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString target = to + QDir(from).relativeFilePath(path);
        QDir().mkpath(QFileInfo(target).absolutePath());
        QFile::copy(path, target);
    }
    return true;
}

} // namespace vt::test
