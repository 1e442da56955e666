#include <ncamcontainer/coFeaturePool.h>

#include <algorithm>
#include <utility>

constinit int coFeatureID::count_m = 0;

basecoFeature::~basecoFeature() = default;

void basecoFeature::bind(const basecoFeature* other) {
    // Data of its own are deleted by a feature of the same class, which knows their type.
    if (m_is_owner != 0) {
        const std::unique_ptr<basecoFeature> owner(create());
        std::swap(owner->m_data, m_data);
        std::swap(owner->m_is_owner, m_is_owner);
    }
    m_data = other != nullptr ? other->m_data : nullptr;
}

coFeaturePool::~coFeaturePool() = default;

void coFeaturePool::become(utCopy, const coFeaturePool& other) {
    if (this == &other) return;
    m_features.clear();
    for (const auto& feature : other.m_features) {
        m_features.emplace_back(feature->create())->make_copy_data(feature.get());
    }
}

int coFeaturePool::get(basecoFeature& feature) const {
    feature.bind(find(feature.get_id()));
    return feature.is_bound() ? 1 : 0;
}

int coFeaturePool::add(basecoFeature& feature) {
    if (get(feature) != 0) return 0;
    m_features.emplace_back(feature.create())->make_data();
    feature.bind(m_features.back().get());
    return 1;
}

int coFeaturePool::remove(basecoFeature& feature) {
    feature.bind(nullptr);
    const auto is_it = [&](const auto& each) { return each->get_id() == feature.get_id(); };
    return std::erase_if(m_features, is_it) != 0 ? 1 : 0;
}

const basecoFeature* coFeaturePool::find(const coFeatureID& id) const noexcept {
    for (const auto& feature : m_features) {
        if (feature->get_id() == id) return feature.get();
    }
    return nullptr;
}
