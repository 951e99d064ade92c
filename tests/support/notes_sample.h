#pragma once
// Notes of known shape for the tests of interrupted saves: save i of round r is a heading, a
// body whose length depends on i, and a closing line, so a file cut anywhere is told from a
// whole one.

#include <QString>
#include <QStringList>

namespace vt::test {

inline QString SampleNotes(int round, int save) {
    QStringList lines;
    lines << QStringLiteral("round %1 save %2").arg(round).arg(save);
    const int bodyLines = save % 7 * 40 + 1;
    for (int i = 0; i < bodyLines; ++i)
        lines << QStringLiteral("%1 我们学习中文。The learner writes a line of the translation.")
                     .arg(i, 4, 10, QChar(u'0'));
    lines << QStringLiteral("end %1 %2").arg(round).arg(save);
    return lines.join(u'\n');
}

} // namespace vt::test
