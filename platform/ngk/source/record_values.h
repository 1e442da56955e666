// record_values: the numbers and lists of numbers that records of curves and surfaces consist of.
#pragma once

#include <mfc/archive_values.h>
#include <ngk/ngkSpace.h>
#include <ngk/ngkT.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace nmk_ngk {

using nmk_mfc::read_flag;
using nmk_mfc::refuse;
using nmk_mfc::require;
using nmk_mfc::write_count;
using nmk_mfc::write_flag;

inline void write_value(CArchive& archive, double number) { archive << number; }

template <int Dimension>
void write_value(CArchive& archive, const Vec<Dimension>& v) {
    for (const double coordinate : v.c) archive << coordinate;
}

inline void write_value(CArchive& archive, const ngkRange& range) {
    archive << range.low << range.high;
}

inline void read_value(CArchive& archive, double& number) { archive >> number; }

template <int Dimension>
void read_value(CArchive& archive, Vec<Dimension>& v) {
    for (double& coordinate : v.c) archive >> coordinate;
}

inline void read_value(CArchive& archive, ngkRange& range) { archive >> range.low >> range.high; }

template <class Value>
Value read_as(CArchive& archive) {
    Value value;
    read_value(archive, value);
    return value;
}

template <class Value>
void write_list(CArchive& archive, const std::vector<Value>& values) {
    for (const Value& value : values) write_value(archive, value);
}

/// As many values as are said to be there; memory grows with those that are.
template <class Value>
std::vector<Value> read_list(CArchive& archive, std::uint64_t count) {
    constexpr std::uint64_t taken_at_once = 1024;
    std::vector<Value> values;
    values.reserve(static_cast<std::size_t>(std::min(count, taken_at_once)));
    for (; count > 0; --count) values.push_back(read_as<Value>(archive));
    return values;
}

/// Weights, as many as there are points, or none.
inline void write_weights(CArchive& archive, const std::vector<double>& weights) {
    write_flag(archive, !weights.empty());
    write_list(archive, weights);
}
inline std::vector<double> read_weights(CArchive& archive, std::uint64_t count) {
    return read_flag(archive) ? read_list<double>(archive, count) : std::vector<double>();
}

}  // namespace nmk_ngk
