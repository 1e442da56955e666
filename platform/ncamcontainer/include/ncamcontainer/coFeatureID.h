// coFeatureID: the number of a feature class.
//
// Each class of features has one, a static; the numbers count up in the order in which the statics
// are made, and so differ between builds. They are for comparing in one process only.
#pragma once

#include <utils/utExport.h>

class UT_EXPORT coFeatureID {
  public:
    /// Takes the next number.
    coFeatureID() noexcept : m_value(++count_m) {}
    coFeatureID(const coFeatureID&) = delete;
    coFeatureID& operator=(const coFeatureID&) = delete;

    /// From 1.
    int value() const noexcept { return m_value; }

    bool operator==(const coFeatureID& other) const noexcept { return m_value == other.m_value; }

    /// The number that was taken last.
    static int count_m;

  private:
    int m_value;
};
