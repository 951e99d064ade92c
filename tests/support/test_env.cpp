#include "support/test_env.h"

#include "program/form_registry.h"

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
