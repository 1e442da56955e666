// object_stream_fuzzer: any bytes loaded as a stream of objects, texts and counts.
//
// Whatever loads without an exception is stored, loaded and stored once more: both times the bytes
// are the same. No byte makes more than one object. Streams that name a class of the library are
// left to identifier_stream_fuzzer: here nobody would delete its objects.

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "stream_objects.h"

namespace {

using Bytes = std::vector<unsigned char>;

void require(bool condition) {
    if (!condition) std::abort();
}

// Two objects and a text behind them. Returns false where the stream ends in an exception.
bool load(const Bytes& bytes, std::vector<const CObject*>& objects, std::string& text,
          int buffer_size) {
    try {
        load_bytes(
            bytes,
            [&](CArchive& archive) {
                objects.push_back(archive.ReadObject(nullptr));
                objects.push_back(archive.ReadObject(StreamNode::GetThisClass()));
                archive >> text;
            },
            buffer_size);
        return true;
    } catch (const CArchiveException&) {
        return false;
    }
}

Bytes store(const std::vector<const CObject*>& objects, const std::string& text) {
    return stored_bytes([&](CArchive& archive) {
        for (const CObject* object : objects) archive << object;
        archive << text;
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view stream(reinterpret_cast<const char*>(data), size);
    if (stream.find("nmk") != stream.npos) return 0;
    const StreamClasses classes;
    const Bytes bytes(data, data + size);
    std::vector<const CObject*> objects;
    std::string text;
    const bool is_loaded = load(bytes, objects, text, size % 2 == 0 ? 4096 : 5);
    require(StreamNode::living().size() <= size);
    if (is_loaded) {
        const Bytes stored = store(objects, text);
        std::vector<const CObject*> again;
        require(load(stored, again, text, 4096));
        require(store(again, text) == stored);
    }
    StreamNode::delete_all();
    return 0;
}
