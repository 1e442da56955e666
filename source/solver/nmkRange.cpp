// nmkRange: an interval of numbers whose ends may belong to it or not.
#include <nmktoolbox/solver/nmkRange.h>

#include <limits>

namespace {

// How far inside an end that does not belong to the range the numbers begin that do.
constexpr double open_end_inset = 1e-10;

constexpr double largest = std::numeric_limits<double>::max();

}  // namespace

nmkRange::nmkRange() : nmkRange(largest, largest) {}

nmkRange::nmkRange(double lo, double hi) : nmkRange(lo, hi, 1, 1) {}

nmkRange::nmkRange(double lo, double hi, int lo_inclusive, int hi_inclusive)
    : m_lo(lo), m_hi(hi), m_lo_inclusive(lo_inclusive), m_hi_inclusive(hi_inclusive) {}

nmkRange::~nmkRange() = default;

void nmkRange::allow_equality(int lo_inclusive, int hi_inclusive) {
    m_lo_inclusive = lo_inclusive;
    m_hi_inclusive = hi_inclusive;
}

int nmkRange::contains(double value) const { return holds(value) ? 1 : 0; }

int nmkRange::clamp(double& value) const {
    if (value < effective_low()) {
        value = effective_low();
        return -1;
    }
    if (value > effective_high()) {
        value = effective_high();
        return 1;
    }
    return 0;
}

int nmkRange::overlaps(const nmkRange& other) const {
    // Two equal open ranges hold none of each other's ends.
    if (m_lo == other.m_lo && m_hi == other.m_hi && m_hi > m_lo) return 1;
    if (other.holds(m_hi) || other.holds(m_lo)) return 1;
    return holds(other.m_lo) || holds(other.m_hi) ? 1 : 0;
}

const utString& nmkRange::get_range_string() const {
    static utString text;
    text = "";
    if (m_lo == largest || m_lo > m_hi) return text;
    const double low = effective_low();
    const double high = effective_high();
    const bool has_low = !(low <= -largest && high >= -largest);
    const bool has_high = !(low <= largest && high >= largest);
    if (has_low && has_high) {
        text << m_lo << " <" << (m_lo_inclusive != 0 ? "= x <" : " x <")
             << (m_hi_inclusive != 0 ? "= " : " ") << m_hi;
    } else if (has_high) {
        text << "x <" << (m_hi_inclusive != 0 ? "= " : " ") << m_hi;
    } else if (has_low) {
        text << "x >" << (m_lo_inclusive != 0 ? "= " : " ") << m_lo;
    }
    return text;
}

double nmkRange::effective_low() const {
    return m_lo_inclusive == 0 ? m_lo + open_end_inset : m_lo;
}

double nmkRange::effective_high() const {
    return m_hi_inclusive == 0 ? m_hi - open_end_inset : m_hi;
}

bool nmkRange::holds(double value) const {
    return !(value < effective_low()) && !(value > effective_high());
}
