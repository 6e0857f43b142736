#include <zet/QorSwapBytesLoop>

#include <algorithm>
#include <bit>

#include "core/ZetUnitInit"
#include "image/ZetPixelKernels"

namespace zet {

void QorSwapBytesLoop::operator()(const ZetBlockedRange1D<int>& range) const
{
    if (m_elementSize < 2 || range.begin() >= range.end()) {
        return;
    }
    const unsigned long count = static_cast<unsigned long>(range.end()) - static_cast<unsigned long>(range.begin());
    unsigned char* element = m_data + static_cast<unsigned long>(range.begin()) * m_elementSize;
    if (m_elementSize <= 8 && std::has_single_bit(m_elementSize)) {
        internal::pixelKernels().swap[std::countr_zero(m_elementSize) - 1](element, count);
        return;
    }
    for (unsigned long i = 0; i < count; ++i, element += m_elementSize) {
        std::reverse(element, element + m_elementSize);
    }
}

}  // namespace zet
