#pragma once
// The program's QApplication: it gives a form with key preview each key before the control with
// the focus sees it, exactly once per key.

#include <QApplication>

namespace vt {

class Application : public QApplication {
public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace vt
