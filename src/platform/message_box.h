#pragma once
// Message boxes through one service: text, flags (buttons, icon, default), title; the answer is
// the button pressed. The program shows a modal box; tests answer from a script and keep a record
// of every box shown.

#include <QPointer>
#include <QString>
#include <QWidget>
#include <deque>
#include <vector>

namespace vt {

namespace Mb {
enum Flags : int {
    OKOnly = 0,
    OKCancel = 1,
    AbortRetryIgnore = 2,
    YesNoCancel = 3,
    YesNo = 4,
    RetryCancel = 5,
    Critical = 16,
    Question = 32,
    Exclamation = 48,
    Information = 64,
    DefaultButton2 = 256,
    DefaultButton3 = 512,
};
enum Result : int { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };
} // namespace Mb

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual int MsgBox(const QString& text, int flags = Mb::OKOnly, const QString& title = {}) = 0;
    // The button a box with these flags answers by default (Enter).
    static int DefaultAnswer(int flags);
};

class QtMessageBoxes final : public MessageBoxes {
public:
    void SetParent(QWidget* parent) { parent_ = parent; }
    int MsgBox(const QString& text, int flags, const QString& title) override;

private:
    QPointer<QWidget> parent_;
};

class ScriptedMessageBoxes final : public MessageBoxes {
public:
    struct Shown {
        QString text;
        int flags;
        QString title;
    };
    // Answers given in order; when the script is used up, each box takes its default button.
    void Answer(int result) { answers_.push_back(result); }
    int MsgBox(const QString& text, int flags, const QString& title) override;

    const std::vector<Shown>& Boxes() const { return shown_; }
    int Count() const { return static_cast<int>(shown_.size()); }
    const Shown& Last() const { return shown_.back(); }
    void Clear() {
        shown_.clear();
        answers_.clear();
    }

private:
    std::deque<int> answers_;
    std::vector<Shown> shown_;
};

} // namespace vt
