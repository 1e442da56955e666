#include <nmktoolbox/curves/nmkPolySplitter.h>

#include <algorithm>

void nmkPolySplitter::reset(int count, int piece) noexcept {
    m_last = std::max(count, 0) - 1;
    m_position = 0;
    m_step = std::max(piece, 1) - 1;
}

int nmkPolySplitter::next(int& first, int& last) noexcept {
    if (m_position == m_last || m_step == 0) return 0;
    first = m_position;
    // The sum of two 32-bit numbers.
    const std::int64_t end = std::int64_t{m_position} + m_step;
    last = static_cast<std::int32_t>(std::min<std::int64_t>(end, m_last));
    m_position = last;
    return last - first + 1;
}

int nmkPolySplitter::num_seg() const noexcept {
    if (m_step == 0) return 0;
    return std::max(static_cast<int>((std::int64_t{m_last} - 1 + m_step) / m_step), 0);
}
