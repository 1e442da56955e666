#include <falloc/fbaAllocator.h>
#include <nmktoolbox/trifile/nmkNodeUnduplicator.h>

#include <memory>
#include <new>

#include "PointSet.h"

using nmk_trifile::NodeRecord;
using nmk_trifile::PointSet;

namespace {

constexpr int record_size = static_cast<int>(sizeof(NodeRecord));
constexpr int records_per_page = 2000;

NodeRecord* new_record(fbaAllocator& allocator) {
    return new (allocator.allocate()) NodeRecord{giPoint3(), 0};
}

}  // namespace

nmkNodeUnduplicator::nmkNodeUnduplicator() noexcept
    : m_set(nullptr), m_allocator(nullptr), m_is_ready(0), m_spare(nullptr) {}

nmkNodeUnduplicator::~nmkNodeUnduplicator() { free_all(); }

void nmkNodeUnduplicator::free_all() noexcept {
    if (m_spare != nullptr) m_allocator->free(m_spare);
    m_spare = nullptr;
    delete m_set;
    m_set = nullptr;
    delete m_allocator;
    m_allocator = nullptr;
    m_is_ready = 0;
}

void nmkNodeUnduplicator::clear() {
    free_all();
    auto set = std::make_unique<PointSet>();
    auto allocator = std::make_unique<fbaAllocator>(record_size, records_per_page);
    m_spare = new_record(*allocator);
    m_set = set.release();
    m_allocator = allocator.release();
    m_is_ready = 1;
}

long long nmkNodeUnduplicator::node_index(const giPoint3& point, long long index) {
    if (m_is_ready == 0) clear();
    *m_spare = {point, index};
    const NodeRecord* const record = m_set->add(m_spare);
    if (record == m_spare) m_spare = new_record(*m_allocator);
    return record->index;
}
