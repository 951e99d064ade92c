#include "platform/message_box.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace vt {

namespace {
std::vector<int> buttonsOf(int flags) {
    switch (flags & 7) {
    case Mb::OKCancel:
        return {Mb::OK, Mb::Cancel};
    case Mb::AbortRetryIgnore:
        return {Mb::Abort, Mb::Retry, Mb::Ignore};
    case Mb::YesNoCancel:
        return {Mb::Yes, Mb::No, Mb::Cancel};
    case Mb::YesNo:
        return {Mb::Yes, Mb::No};
    case Mb::RetryCancel:
        return {Mb::Retry, Mb::Cancel};
    default:
        return {Mb::OK};
    }
}

QString captionOf(int result) {
    switch (result) {
    case Mb::OK:
        return QStringLiteral("OK");
    case Mb::Cancel:
        return QStringLiteral("Cancel");
    case Mb::Abort:
        return QStringLiteral("Abort");
    case Mb::Retry:
        return QStringLiteral("Retry");
    case Mb::Ignore:
        return QStringLiteral("Ignore");
    case Mb::Yes:
        return QStringLiteral("Yes");
    default:
        return QStringLiteral("No");
    }
}
} // namespace

int MessageBoxes::DefaultAnswer(int flags) {
    const auto buttons = buttonsOf(flags);
    size_t index = 0;
    if (flags & Mb::DefaultButton2) index = 1;
    if (flags & Mb::DefaultButton3) index = 2;
    return buttons[std::min(index, buttons.size() - 1)];
}

int QtMessageBoxes::MsgBox(const QString& text, int flags, const QString& title) {
    QMessageBox box(parent_ ? parent_.data() : QApplication::activeWindow());
    box.setText(text);
    box.setWindowTitle(title.isEmpty() ? QStringLiteral("Vantoria 2007") : title);
    switch (flags & 0x70) {
    case Mb::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case Mb::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case Mb::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case Mb::Information:
        box.setIcon(QMessageBox::Information);
        break;
    default:
        break;
    }
    const int def = DefaultAnswer(flags);
    std::vector<std::pair<QPushButton*, int>> map;
    for (int b : buttonsOf(flags)) {
        auto role =
            (b == Mb::Cancel || b == Mb::No) ? QMessageBox::RejectRole : QMessageBox::AcceptRole;
        QPushButton* pb = box.addButton(captionOf(b), role);
        if (b == def) box.setDefaultButton(pb);
        map.emplace_back(pb, b);
    }
    box.exec();
    for (auto& [pb, b] : map)
        if (box.clickedButton() == pb) return b;
    // Closed with Escape or the window's close box: the last button when it cancels.
    return buttonsOf(flags).size() > 1 ? buttonsOf(flags).back() : Mb::OK;
}

int ScriptedMessageBoxes::MsgBox(const QString& text, int flags, const QString& title) {
    shown_.push_back({text, flags, title});
    if (answers_.empty()) return DefaultAnswer(flags);
    const int a = answers_.front();
    answers_.pop_front();
    return a;
}

} // namespace vt
