// record_values: the numbers and lists of numbers that records of curves and surfaces consist of.
#pragma once

#include <mfc/CArchive.h>
#include <ngk/ngkSpace.h>
#include <ngk/ngkT.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace nmk_ngk {

[[noreturn]] inline void refuse(CArchiveException::Cause cause) { throw CArchiveException(cause); }

inline void require(bool is_well_formed) {
    if (!is_well_formed) refuse(CArchiveException::badIndex);
}

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

/// A byte that is 0 or 1.
inline void write_flag(CArchive& archive, bool flag) {
    archive << static_cast<std::uint8_t>(flag ? 1 : 0);
}
inline bool read_flag(CArchive& archive) {
    std::uint8_t flag = 0;
    archive >> flag;
    require(flag <= 1);
    return flag == 1;
}

inline void write_count(CArchive& archive, std::size_t count) {
    if (count > UINT32_MAX) refuse(CArchiveException::generic);
    archive.WriteCount(static_cast<std::uint32_t>(count));
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
