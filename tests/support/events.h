#pragma once
// Events as the learner makes them: hover (a real mouse-move event; QTest's mouse move does not
// deliver hover), clicks, and keys through the program's own key routing.

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace vt::test {

inline void MouseMoveOver(QWidget* w, QPoint at = {5, 5}) {
    QMouseEvent e(QEvent::MouseMove, QPointF(at), w->mapToGlobal(QPointF(at)), Qt::NoButton,
                  Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

inline void Click(QWidget* w, QPoint at = {5, 5}) {
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(at), w->mapToGlobal(QPointF(at)),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(at), w->mapToGlobal(QPointF(at)),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(w, &release);
}

inline void PressKey(QWidget* w, int qtKey, const QString& text = {}) {
    QKeyEvent e(QEvent::KeyPress, qtKey, Qt::NoModifier, text);
    QApplication::sendEvent(w, &e);
}

} // namespace vt::test
