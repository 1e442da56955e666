// nmkGiTriBlockFeatures.cpp: the two features that the kernel adds to blocks of triangles. Their
// numbers are taken in the order of this file: first the colour's, then the data's.
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>
#include <nmktoolbox/trifile/nmkGiTriData.h>
#include <nmktoolbox/trifile/nmkTriBlockParThicknessOverride.h>

#include "marked_value.h"

namespace {

std::int32_t default_colour = 3;

}  // namespace

const coFeatureID nmkGiTriBlockColourcoFeature::s_id;
const coFeatureID nmkGiTriDatacoFeature::s_id;

nmkGiTriBlockColour::~nmkGiTriBlockColour() = default;

basecoFeature* nmkGiTriBlockColourcoFeature::create() const {
    return new nmkGiTriBlockColourcoFeature;
}
const coFeatureID& nmkGiTriBlockColourcoFeature::get_id() const { return s_id; }

nmkGiTriData::nmkGiTriData(utCopy, const nmkGiTriData& other) : nmkGiTriData(other) {}

nmkGiTriData::~nmkGiTriData() = default;

double nmkGiTriData::get_thickness() const {
    if (m_thickness_override != nullptr) return m_thickness_override->get_thickness();
    return nmk_trifile::zero_if_unset(m_thickness);
}

void nmkGiTriData::set_thickness(double thickness) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->set_thickness(thickness);
    } else {
        m_thickness = thickness;
    }
}

double nmkGiTriData::get_thickness_axial() const {
    if (m_thickness_override != nullptr) return m_thickness_override->get_thickness_axial();
    return nmk_trifile::zero_if_unset(m_use_axial_thickness != 0 ? m_thickness_axial : m_thickness);
}

void nmkGiTriData::set_thickness_axial(double thickness) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->set_thickness_axial(thickness);
    } else {
        m_thickness_axial = thickness;
    }
}

// Deliberate: get_use_thickness_axial reads the own field, also where this writes to the override.
void nmkGiTriData::use_axial_thickness(int use) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->use_axial_thickness(use);
    } else {
        m_use_axial_thickness = use;
    }
}

nmkGiTriDataModelType nmkGiTriData::get_model_type() const {
    return m_thickness_override != nullptr ? m_thickness_override->get_model_type() : m_model_type;
}

void nmkGiTriData::set_model_type(nmkGiTriDataModelType type) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->set_model_type(type);
    } else {
        m_model_type = type;
    }
}

nmkGiTriDataMachiningType nmkGiTriData::get_machining_type() const {
    return m_thickness_override != nullptr ? m_thickness_override->get_machining_type()
                                           : m_machining_type;
}

void nmkGiTriData::set_machining_type(nmkGiTriDataMachiningType type) {
    if (m_thickness_override != nullptr) {
        m_thickness_override->set_machining_type(type);
    } else {
        m_machining_type = type;
    }
}

void nmkGiTriData::set_default_colour(int colour) noexcept { default_colour = colour; }

basecoFeature* nmkGiTriDatacoFeature::create() const { return new nmkGiTriDatacoFeature; }
const coFeatureID& nmkGiTriDatacoFeature::get_id() const { return s_id; }
