#pragma once
// One allocation of text from which many strings are cut without copying. The start-up load
// keeps about a hundred thousand short fields (a word's Pinyin, its Chinese, its meaning, a
// sentence); each file's decoded text is one SharedText, and the fields are cut from it, so that
// a file costs one allocation instead of one per field.
//
// A cut is an ordinary QString: copied, compared and passed around as any other, and a change
// to it copies it out of the block first (or, once no other string shares the block, writes
// where nobody reads any more). The block is freed when the last string cut from it goes, so a
// cut never outlives its text.
//
// What it does not do: it does not let two different cuts overlap. A cut sets the unit just past
// its end to 0, so that its text is terminated like every QString's; that unit must belong to no
// other cut. The same span may be cut any number of times: the strings share their text. Not
// thread-safe while cutting; the strings it gave are as safe as any QString.

#include <QString>

namespace vt {

class SharedText {
public:
    SharedText() = default;
    // Room for capacity code units, not initialised.
    explicit SharedText(qsizetype capacity);
    SharedText(SharedText&& other) noexcept;
    SharedText& operator=(SharedText&& other) noexcept;
    SharedText(const SharedText&) = delete;
    SharedText& operator=(const SharedText&) = delete;
    ~SharedText();

    // The units, to be written before they are cut. Writing over a unit that a cut holds
    // changes that string.
    char16_t* Data() { return block_.data_ptr().data(); }
    const char16_t* Data() const { return block_.data_ptr().data(); }
    qsizetype Capacity() const { return block_.size(); }
    // Whether strings have been cut from this block: if so, its units are taken.
    bool HasCuts() const { return cut_; }

    // The string of the size units from begin, sharing the block; begin + size is at most
    // Capacity() and that unit becomes 0. An empty size gives a null string and no cut.
    QString Cut(qsizetype begin, qsizetype size) {
        if (size <= 0) return QString();
        if (spareRefs_ == 0) addSpare();
        --spareRefs_;
        cut_ = true;
        QStringPrivate& d = block_.data_ptr();
        char16_t* text = d.data() + begin;
        text[size] = u'\0';
        // Adopts one of the references counted ahead.
        return QString(QStringPrivate(d.d_ptr(), text, size));
    }

private:
    void addSpare();
    void releaseSpare();

    QString block_; // holds the allocation, and one reference to it
    // References already added to the block for cuts still to come: a cut takes one of them
    // without touching the shared count, which is raised in batches.
    int spareRefs_ = 0;
    bool cut_ = false;
};

} // namespace vt
