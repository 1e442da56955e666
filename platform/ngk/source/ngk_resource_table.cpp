#include <ngk/ngk_resource_table.h>

namespace {

constexpr std::array<double, 3> values_at_first = {1e-05, 1e-05, 1e-04};

}  // namespace

ngkResourceTable::ngkResourceTable() noexcept { reset(); }

void ngkResourceTable::reset() noexcept {
    for (std::size_t i = 0; i < m_values.size(); ++i) m_values[i] = values_at_first[i];
}

ngkResourceTable& ngk_resource_table_inquire() noexcept {
    static ngkResourceTable table;
    return table;
}
