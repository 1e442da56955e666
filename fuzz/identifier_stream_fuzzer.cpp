// identifier_stream_fuzzer: any bytes as a stream of identifiers.
//
// Each object has its bytes to itself and in order, and the archive of the library agrees: it loads
// as many pointers, of the same classes.

#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/uniqueid.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <vector>

#include "commands/id/identifier_stream.h"

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

std::vector<nmk_id::StoredObject> read_objects(std::span<const unsigned char> bytes,
                                               std::optional<nmk_id::StreamStop>& stop) {
    std::vector<nmk_id::StoredObject> objects;
    stop = nmk_id::read_identifier_stream(
        bytes, [&](const nmk_id::StoredObject& object) { objects.push_back(object); });
    return objects;
}

void check_order(const std::vector<nmk_id::StoredObject>& objects, std::size_t size) {
    std::size_t last = 0;
    for (const nmk_id::StoredObject& object : objects) {
        require(object.offset >= last && object.offset < size);
        require(object.record_offset <= size);
        last = object.offset + 2;
    }
}

void compare_with_the_archive(const std::vector<nmk_id::StoredObject>& objects,
                              std::span<const unsigned char> bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    std::set<CObject*> loaded;
    for (const nmk_id::StoredObject& object : objects) {
        CObject* const found = archive.ReadObject(nullptr);
        loaded.insert(found);
        const char* const name =
            found == nullptr ? "null" : found->GetRuntimeClass()->m_lpszClassName;
        require(std::strcmp(name, nmk_id::name_of(object.object_class)) == 0);
    }
    for (CObject* object : loaded) delete object;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const unsigned char> bytes(data, size);
    std::optional<nmk_id::StreamStop> stop;
    const std::vector<nmk_id::StoredObject> objects = read_objects(bytes, stop);
    require(!stop || stop->offset < size);
    check_order(objects, size);
    compare_with_the_archive(objects, bytes);
    nmkUniqueIdTable::delete_session_entities();
    return 0;
}
