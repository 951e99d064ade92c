// The dictionary on a full-size made-up course: the time of a search from the call to a painted
// list, for the heaviest queries, and of a row's entry with its example sentences (computed,
// then from the cache). Prints a table; asserts nothing.
//
//   bench_dictionary [runs]     (default 15; the best and the worst run of each are shown)
//
// Runs on the display it finds (QT_QPA_PLATFORM, or an X server through DISPLAY).

#include "bench_services.h"
#include "core/knowledge_base.h"
#include "core/runtime.h"
#include "course_generator.h"
#include "search/dictionary.h"
#include "search/zoom.h"

#include <QApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <vector>

using namespace vt;
using bench::NowMs;
using bench::Services;

namespace {

// Times of one measurement: the best, the median and the worst.
struct Figure {
    std::vector<double> ms;
    void add(double t) { ms.push_back(t); }
    double best() const { return *std::min_element(ms.begin(), ms.end()); }
    double worst() const { return *std::max_element(ms.begin(), ms.end()); }
    double median() const {
        std::vector<double> sorted = ms;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }
    QString text() const {
        return QString::asprintf("%7.3f / %7.3f / %7.3f ms", best(), median(), worst());
    }
};

// A search and its painted list. Another search first, so that the same text runs again.
double timedSearch(Dictionary& d, const QString& text) {
    QString other = QStringLiteral("zzz");
    d.Common01(other, false);
    QApplication::processEvents();
    QString t = text;
    const double t0 = NowMs();
    d.Common01(t, false);
    d.ListView1->viewport()->repaint();
    d.Text1->viewport()->repaint();
    return NowMs() - t0;
}

// The most frequent character of the words: the heaviest single-character search.
QString commonestCharacter(const AppState& app) {
    std::map<char16_t, int> counts;
    for (int i = 1; i <= app.WordCount; ++i)
        for (const QChar c : app.WordTable[i].Chinese)
            if (c.unicode() > 255) ++counts[c.unicode()];
    char16_t best = u'的';
    int most = 0;
    for (const auto& [c, n] : counts)
        if (n > most) most = n, best = c;
    return QString(QChar(best));
}

} // namespace

int main(int argc, char** argv) {
    QApplication qapp(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 15;

    QTemporaryDir dir;
    const QString appPath = dir.path() + u'/';
    FileStore files;
    coursegen::CourseShape shape;
    shape.textLinesPerLesson = 15; // 2,100 sentences
    coursegen::GenerateCourse(files, appPath, shape);
    Services s(appPath, 1280, 800);
    LoadProgress progress;
    LoadKnowledgeBase(*s.rt, progress);
    const AppState& kb = s.rt->app;

    Dictionary* d = s.rt->forms.Load<Dictionary>();
    d->Move(0, 0);
    d->Show();
    QApplication::processEvents();

    const QString common = commonestCharacter(kb);
    std::printf("course: %d words, %d sentences, %d characters; platform %s\n", kb.WordCount,
                kb.SentenceCount, kb.CharCount, qPrintable(QApplication::platformName()));
    std::printf("search, call to painted list (best / median / worst of %d):\n", runs);
    const QString queries[] = {QStringLiteral("a"),    QStringLiteral("to"),
                               QStringLiteral("de0"),  QString::fromUtf8("的"),
                               QStringLiteral("shi4"), common};
    for (const QString& q : queries) {
        Figure f;
        int hits = 0;
        for (int i = 0; i < runs; ++i) {
            f.add(timedSearch(*d, q));
            hits = d->ListView1->Count();
        }
        std::printf("  %-10s %6d hits  %s\n", qPrintable(q), hits, qPrintable(f.text()));
    }

    // A single common character selected with "Automatically" ticked: the zoom window and the
    // search.
    {
        Figure f;
        for (int i = 0; i < runs; ++i) {
            QString other = QStringLiteral("zzz");
            d->Common01(other, false);
            s.rt->forms.Unload<Zoom>();
            QApplication::processEvents();
            const double t0 = NowMs();
            d->Text1->SetText(common);
            d->Text1->Select(0, 1);
            s.rt->SelectionMade(*d->Text1, 300, 300);
            d->ListView1->viewport()->repaint();
            if (Zoom* z = s.rt->forms.Get<Zoom>()) z->repaint();
            f.add(NowMs() - t0);
        }
        std::printf("  %-10s selected: zoom window and list  %s\n", qPrintable(common),
                    qPrintable(f.text()));
    }

    // A row's entry: the first click computes its sentences, a second one reads the cache.
    {
        QString t = common;
        Figure first, again;
        for (int i = 0; i < runs; ++i) {
            QString other = QStringLiteral("zzz");
            d->Common01(other, false);
            t = common;
            d->Common01(t, false);
            const int rows = std::min(d->ListView1->Count(), 200);
            for (int row = 1; row <= rows; ++row) {
                double t0 = NowMs();
                Q_EMIT d->ListView1->ItemClick(row);
                d->Text1->viewport()->repaint();
                first.add(NowMs() - t0);
                t0 = NowMs();
                Q_EMIT d->ListView1->ItemClick(row);
                d->Text1->viewport()->repaint();
                again.add(NowMs() - t0);
            }
        }
        std::printf("row entry with sentences, rows of %s (best / median / worst):\n",
                    qPrintable(common));
        std::printf("  %-34s %s\n", "first click (sentences computed)", qPrintable(first.text()));
        std::printf("  %-34s %s\n", "again (from the cache)", qPrintable(again.text()));
    }
    s.rt->forms.DestroyAll();
    return 0;
}
