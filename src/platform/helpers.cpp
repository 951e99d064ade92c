#include "platform/helpers.h"

namespace vt {

QString LTrim(const QString& s) {
    qsizetype i = 0;
    while (i < s.size() && s[i] == u' ')
        ++i;
    return s.mid(i);
}

QString RTrim(const QString& s) {
    qsizetype n = s.size();
    while (n > 0 && s[n - 1] == u' ')
        --n;
    return s.left(n);
}

QStringView TrimView(QStringView s) {
    qsizetype b = 0, e = s.size();
    while (b < e && s[b] == u' ')
        ++b;
    while (e > b && s[e - 1] == u' ')
        --e;
    return s.sliced(b, e - b);
}

QString Trim(const QString& s) {
    const QStringView t = TrimView(s);
    return t.size() == s.size() ? s : t.toString();
}

namespace {

// Scans a number from position i; returns the end position, or i when no digit was read.
qsizetype scanNumber(const QString& s, qsizetype i) {
    const qsizetype start = i;
    if (i < s.size() && (s[i] == u'+' || s[i] == u'-')) ++i;
    bool digits = false;
    while (i < s.size() && s[i].isDigit() && s[i].unicode() < 128) {
        ++i;
        digits = true;
    }
    if (i < s.size() && s[i] == u'.') {
        qsizetype j = i + 1;
        bool frac = false;
        while (j < s.size() && s[j].unicode() >= u'0' && s[j].unicode() <= u'9') {
            ++j;
            frac = true;
        }
        if (digits || frac) {
            i = j;
            digits = true;
        }
    }
    if (!digits) return start;
    if (i < s.size() && (s[i] == u'e' || s[i] == u'E')) {
        qsizetype j = i + 1;
        if (j < s.size() && (s[j] == u'+' || s[j] == u'-')) ++j;
        qsizetype k = j;
        while (k < s.size() && s[k].unicode() >= u'0' && s[k].unicode() <= u'9')
            ++k;
        if (k > j) i = k;
    }
    return i;
}

} // namespace

double Val(const QString& s) {
    qsizetype i = 0;
    while (i < s.size() && s[i] == u' ')
        ++i;
    const qsizetype end = scanNumber(s, i);
    if (end == i) return 0.0;
    bool ok = false;
    const double v = s.mid(i, end - i).toDouble(&ok);
    return ok ? v : 0.0;
}

bool IsNumeric(const QString& s) {
    const QString t = Trim(s);
    if (t.isEmpty()) return false;
    return scanNumber(t, 0) == t.size();
}

} // namespace vt
