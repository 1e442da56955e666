// record_kinds: the classes whose objects a handle may have in a stream, and the handle itself.
//
// Each class has one RecordKind, with two functions that write and read its numbers. `nesting` is
// how many handles are around these numbers, their own included.
#pragma once

#include <mfc/CRuntimeClass.h>
#include <ncamcontainer/coPrf.h>
#include <ngk/ngk_persistence.h>

#include <algorithm>
#include <span>
#include <typeinfo>

#include "record_values.h"

namespace nmk_ngk {

template <class Base>
struct RecordKind {
    CRuntimeClass runtime_class;
    const std::type_info* type;
    void (*write)(CArchive& archive, const Base& object, int nesting);
    coPrf<const Base> (*read)(CArchive& archive, int nesting);
};

/// The kinds below a base, and the class of the base, which no object has.
template <class Base>
struct RecordKinds {
    const CRuntimeClass* base;
    std::span<const RecordKind<Base>> kinds;
};

template <class Base>
RecordKinds<Base> record_kinds();
template <>
RecordKinds<ngkCurve2> record_kinds<ngkCurve2>();
template <>
RecordKinds<ngkCurve3> record_kinds<ngkCurve3>();
template <>
RecordKinds<ngkSurf> record_kinds<ngkSurf>();

/// `Record` has the functions write(CArchive&, const Kind&, int) and read(CArchive&, int).
template <class Base, class Kind, class Record>
RecordKind<Base> record_kind(const char* name, const CRuntimeClass* base) {
    constexpr unsigned int version = 1;
    const auto write = [](CArchive& archive, const Base& object, int nesting) {
        Record::write(archive, static_cast<const Kind&>(object), nesting);
    };
    const auto read = [](CArchive& archive, int nesting) {
        return coPrf<const Base>(Record::read(archive, nesting));
    };
    return {{name, static_cast<int>(sizeof(Kind)), base, version}, &typeid(Kind), write, read};
}

template <class Base>
void write_handle(CArchive& archive, const coPrf<const Base>& handle, int nesting) {
    if (!handle) return write_flag(archive, false);
    if (nesting > ngk_max_nesting) refuse(CArchiveException::generic);
    const Base& object = *handle;
    const auto kinds = record_kinds<Base>().kinds;
    const auto kind = std::ranges::find_if(
        kinds, [&](const RecordKind<Base>& each) { return *each.type == typeid(object); });
    if (kind == kinds.end() || !object.is_valid()) refuse(CArchiveException::badSchema);
    write_flag(archive, true);
    archive.WriteClass(&kind->runtime_class);
    kind->write(archive, object, nesting);
}

template <class Base>
coPrf<const Base> read_handle(CArchive& archive, int nesting) {
    if (!read_flag(archive)) return {};
    require(nesting <= ngk_max_nesting);
    const auto [base, kinds] = record_kinds<Base>();
    const CRuntimeClass* const found = archive.ReadClass(base);
    const auto kind = std::ranges::find(
        kinds, found, [](const RecordKind<Base>& each) { return &each.runtime_class; });
    if (kind == kinds.end()) refuse(CArchiveException::badClass);
    const coPrf<const Base> handle = kind->read(archive, nesting);
    require(handle && handle->is_valid());
    return handle;
}

/// What is inside another curve. An empty handle there makes that one invalid.
template <class Base>
void write_inner(CArchive& archive, const coPrf<const Base>& handle, int nesting) {
    write_handle<Base>(archive, handle, nesting + 1);
}
template <class Base>
coPrf<const Base> read_inner(CArchive& archive, int nesting) {
    return read_handle<Base>(archive, nesting + 1);
}

}  // namespace nmk_ngk
