#include <mfc/CArchive.h>
#include <nmktoolbox/curves/Serialize.h>

#include <cstring>

namespace {

void store(const utString& text, CArchive& archive) {
    // Deliberate: cut at a nul inside, which the reader takes for the end; the text behind it
    // would be taken for what comes next.
    const char* const bytes = text.is_null() ? "" : text.c_str();
    archive.Write(bytes, std::strlen(bytes) + 1);
}

utString load(CArchive& archive) {
    std::string bytes;
    for (char byte = 0; archive >> byte, byte != '\0';) bytes += byte;
    return utString(std::move(bytes));
}

}  // namespace

void Serialize(utString& text, CArchive& archive) {
    if (archive.IsStoring()) {
        store(text, archive);
    } else {
        text = load(archive);
    }
}
