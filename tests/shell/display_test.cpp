// The program started where no window can be opened: one sentence on standard error and a
// plain exit with code 1, never an abort.
#include "support/record_files.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// The program's standard error, line by line, with all of unset removed from its environment and
// the NAME=value pairs of set added.
vt::test::ChildResult runProgram(const QStringList& unset, const QStringList& set) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const QString& name : unset)
        env.remove(name);
    for (const QString& pair : set)
        env.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
    return vt::test::RunChild(QStringLiteral(VANTORIA_APP_DIR "/vantoria2007"), {}, env);
}

TEST(NoDisplay, TheProgramSaysSoInOneSentenceAndExits) {
    if (!QFileInfo(QStringLiteral(VANTORIA_APP_DIR "/vantoria2007")).isExecutable())
        GTEST_SKIP() << "the program is not built in " VANTORIA_APP_DIR;
    QTemporaryDir runtimeDir; // a session folder where no Wayland compositor listens
    const QString session = QStringLiteral("XDG_RUNTIME_DIR=") + runtimeDir.path();
    const QStringList all = {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM"};
    struct Row {
        const char* name;
        QStringList set;
        const char* says;
    } rows[] = {
        {"nothing set", {session}, "DISPLAY is not set"},
        {"no server on the display", {session, "DISPLAY=:7319"}, "\":7319\""},
        {"X asked for without a display", {session, "QT_QPA_PLATFORM=xcb"}, "DISPLAY is not set"},
        {"Wayland asked for, none there",
         {session, "QT_QPA_PLATFORM=wayland", "WAYLAND_DISPLAY=wayland-9"},
         "needs a graphical display"},
    };
    for (const Row& r : rows) {
        const auto o = runProgram(all, r.set);
        const QStringList lines = o.errors.split(u'\n', Qt::SkipEmptyParts);
        EXPECT_TRUE(o.exitedNormally) << r.name << ": no abort";
        EXPECT_EQ(o.exitCode, 1) << r.name;
        ASSERT_EQ(lines.size(), 1) << r.name << ": " << o.errors.toStdString();
        EXPECT_TRUE(lines[0].startsWith("Vantoria 2007 needs a graphical display")) << r.name;
        EXPECT_TRUE(lines[0].contains(QString::fromUtf8(r.says))) << r.name;
    }

    // A failure the check cannot foresee ends the same way, after the toolkit's own words.
    const auto o = runProgram(all, {session, "QT_QPA_PLATFORM=nosuchwindowsystem"});
    EXPECT_TRUE(o.exitedNormally);
    EXPECT_EQ(o.exitCode, 1);
    const QStringList lines = o.errors.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_TRUE(lines.last().startsWith("Vantoria 2007 could not open its window: "))
        << o.errors.toStdString();
}

} // namespace
