#include "platform/application.h"

#include "platform/form.h"

#include <QKeyEvent>

// The artwork lives in the library as a Qt resource; a static library must register it.
static void initArtwork() {
    Q_INIT_RESOURCE(resources);
}

namespace vt {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(QStringLiteral("Vantoria 2007"));
    initArtwork();
}

bool Application::notify(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::KeyPress && receiver->isWidgetType()) {
        if (Form* form = FormOf(receiver)) {
            auto* w = static_cast<QWidget*>(receiver);
            const bool onForm = w == form || w == form->Client();
            if ((form->KeyPreview || onForm) && form->PreviewKey(static_cast<QKeyEvent*>(event)))
                return true;
        }
    }
    return QApplication::notify(receiver, event);
}

} // namespace vt
