// registry_fuzzer: any bytes as an export of the registry; one that is read is written and read
// back to the same tree.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "commands/registry/registry_json.h"
#include "commands/registry/registry_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto document = nmk_registry::read_document("fuzz.json", text);
    if (!document) {
        if (document.error().message.empty()) std::abort();
        return 0;
    }
    const auto again =
        nmk_registry::read_document("again.json", nmk_registry::document_json(*document));
    if (!again || !(again->tree == document->tree)) std::abort();
    nmk_registry::tree_text(document->path, document->tree);
    const auto path = nmk_registry::read_key_path(document->path);
    if (path) {
        const auto same = nmk_registry::read_key_path(nmk_registry::key_path_text(*path));
        if (!same || same->root != path->root || same->below != path->below) std::abort();
    }
    return 0;
}
