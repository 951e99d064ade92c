#pragma once
// The small text and number rules that the whole program leans on, in one place:
// blanks-only trimming, the leading-number read, the numeric test, rounding of halves to even,
// Int as floor, and a 1-based growable container so that course arithmetic reads as written.

#include <QColor>
#include <QString>
#include <QStringView>
#include <cmath>
#include <cstdint>
#include <vector>

namespace vt {

// Removes blanks (U+0020) only, at both ends; tabs and other white space stay.
QString Trim(const QString& s);
// The same on a view, without a copy.
QStringView TrimView(QStringView s);
QString LTrim(const QString& s);
QString RTrim(const QString& s);

// Reads the leading number of a text: blanks are skipped, an optional sign, digits, an
// optional fraction and exponent. Stops at the first character that does not fit; no number
// at all gives 0. "12abc" is 12, " -3.5x" is -3.5, "abc" is 0.
double Val(const QString& s);

// True when the whole text (blanks around it allowed) is one number: "12", " 3.5 ", "-7".
// An empty or blank text is not numeric.
bool IsNumeric(const QString& s);

// Rounds halves to the nearest even whole number: 0.5 -> 0, 1.5 -> 2, 2.5 -> 2, -1.5 -> -2.
inline long long RoundHalfEven(double x) {
    return static_cast<long long>(std::nearbyint(x)); // default rounding mode is to-nearest-even
}

// Int: the largest whole number not above x. Int(-0.5) is -1.
inline long long Int(double x) {
    return static_cast<long long>(std::floor(x));
}

// A growable array indexed from 1 to Count(). Index 0 is never valid.
template <class T> class Array1 {
public:
    Array1() = default;
    explicit Array1(int count) : items_(static_cast<size_t>(count < 0 ? 0 : count)) {}

    int Count() const { return static_cast<int>(items_.size()); }
    bool Empty() const { return items_.empty(); }
    T& operator[](int i) { return items_[static_cast<size_t>(i - 1)]; }
    const T& operator[](int i) const { return items_[static_cast<size_t>(i - 1)]; }
    T& at(int i) { return items_.at(static_cast<size_t>(i - 1)); }
    const T& at(int i) const { return items_.at(static_cast<size_t>(i - 1)); }

    // ReDim: sets the count; with preserve the old rows stay, else all rows are fresh.
    void ReDim(int count, bool preserve = true) {
        if (!preserve) items_.clear();
        items_.resize(static_cast<size_t>(count < 0 ? 0 : count));
    }
    void Append(const T& v) { items_.push_back(v); }
    void Append(T&& v) { items_.push_back(std::move(v)); }
    void Erase() { items_.clear(); }
    void Reserve(int n) { items_.reserve(static_cast<size_t>(n)); }
    T& Last() { return items_.back(); }
    const T& Last() const { return items_.back(); }

    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }
    const std::vector<T>& Items() const { return items_; }

private:
    std::vector<T> items_;
};

// Colours as the course writes them: 0x00BBGGRR, so 0x0000FF is red.
inline unsigned BgrToRgb(unsigned bgr) {
    return ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}
inline QColor BgrColor(unsigned bgr) {
    return QColor::fromRgb(static_cast<QRgb>(0xFF000000u | BgrToRgb(bgr)));
}

} // namespace vt
