// identifiers_fuzzer: any bytes as the text of an identifier, as records of owners and references,
// and as a stream of both.
//
// A text either comes back unchanged or gives an invalid identifier. Owners and references that
// were loaded are equal exactly where their valid records are.

#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/uniqueid.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

void require(bool condition) {
    if (!condition) std::abort();
}

void check_text(const std::string& text) {
    const std::unique_ptr<nmkUniqueId> identifier(nmkUniqueId::create());
    identifier->become(text.c_str());
    require(identifier->is_valid() == 0 || identifier->hex_string().view() == text.c_str());
}

template <class Loaded>
std::vector<std::unique_ptr<Loaded>> load_records(const Bytes& bytes) {
    std::vector<std::unique_ptr<Loaded>> loaded;
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    try {
        while (true) {
            auto one = std::make_unique<Loaded>();
            one->Serialize(archive);
            loaded.push_back(std::move(one));
        }
    } catch (const CArchiveException& end) {
        require(end.m_cause == CArchiveException::endOfFile);
    }
    return loaded;
}

void check_records(const Bytes& bytes) {
    const auto references = load_records<nmkRefToObjectId>(bytes);
    const auto owners = load_records<nmkObjectId>(bytes);
    require(references.size() == owners.size() && owners.size() <= bytes.size() / 10);
    for (std::size_t i = 0; i < owners.size(); ++i) {
        require(owners[i]->is_valid() != 0);
        require(owners[i]->is_target_of(*references[i]) == references[i]->is_valid());
    }
}

// Objects of any class may be in the stream; each is deleted once.
void check_stream(const Bytes& bytes) {
    std::set<CObject*> objects;
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    try {
        while (true) objects.insert(archive.ReadObject(nullptr));
    } catch (const CArchiveException&) {
        require(objects.size() <= bytes.size());
    }
    for (CObject* object : objects) delete object;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes(data, data + size);
    check_text(std::string(bytes.begin(), bytes.end()));
    check_records(bytes);
    check_stream(bytes);
    nmkUniqueIdTable::delete_session_entities();
    return 0;
}
