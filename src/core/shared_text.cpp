#include "core/shared_text.h"

#include <utility>

namespace vt {

namespace {

// References added to the block at a time: one locked add for this many cuts.
constexpr int kRefBatch = 4096;

} // namespace

SharedText::SharedText(qsizetype capacity) : block_(capacity, Qt::Uninitialized) {}

SharedText::SharedText(SharedText&& other) noexcept
    : block_(std::move(other.block_)), spareRefs_(std::exchange(other.spareRefs_, 0)),
      cut_(std::exchange(other.cut_, false)) {}

SharedText& SharedText::operator=(SharedText&& other) noexcept {
    if (this != &other) {
        releaseSpare();
        block_ = std::move(other.block_);
        spareRefs_ = std::exchange(other.spareRefs_, 0);
        cut_ = std::exchange(other.cut_, false);
    }
    return *this;
}

SharedText::~SharedText() {
    releaseSpare();
}

void SharedText::releaseSpare() {
    // The block's own reference is still there, so the count stays above zero.
    if (spareRefs_ > 0) block_.data_ptr().d_ptr()->ref_.fetchAndSubRelaxed(spareRefs_);
    spareRefs_ = 0;
}

void SharedText::addSpare() {
    block_.data_ptr().d_ptr()->ref_.fetchAndAddRelaxed(kRefBatch);
    spareRefs_ += kRefBatch;
}

} // namespace vt
