// axmDocumentFactory_benchmark: a document of 50 MB parsed and saved, beside pugixml called
// directly.
//
// Ours refuses what is not well-formed, which costs a pass over the text, and writes the file
// beside, flushed and renamed; in the memory of TMPDIR=/dev/shm a flush costs nothing. Both files
// are the same but for the first line, in which ours names the encoding.

#include <absxml/axmDocumentFactory.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <pugixml.hpp>
#include <string>

#include "stopwatch.h"

namespace {

constexpr int rounds = 5;
constexpr double target = 1.5;

// A list of tools as a configuration has it: attributes, short texts, some references.
std::string document_text() {
    const std::size_t size = static_cast<std::size_t>(stopwatch::size(50'000'000, 500'000));
    std::string text = "<?xml version=\"1.0\"?>\n<tools version=\"3\">\n";
    for (int i = 0; text.size() < size; ++i) {
        const std::string number = std::to_string(i);
        text +=
            "  <tool number=\"" + number + "\" diameter=\"" + std::to_string(i % 400 / 10.0) +
            "\">\n    <name>End mill &lt;" + number + "&gt; for finishing</name>\n" +
            "    <note>Use with coolant &amp; at most 3 passes</note>\n    <worn/>\n  </tool>\n";
    }
    return text + "</tools>\n";
}

std::string name_in_scratch(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

// The file less its first line.
std::string content_of(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    return text.substr(text.find('\n') + 1);
}

bool save_ours(const std::string& text, const std::string& name) {
    const axmDocumentFactory factory;
    axmParseError error;
    const auto document = factory.parse(apByteArray(text), axmLoadOptions(), error);
    return document != nullptr &&
           factory.save(*document, apPath(apString(std::wstring(name.begin(), name.end()))));
}

bool save_with_pugixml(const std::string& text, const std::string& name) {
    pugi::xml_document document;
    return document.load_buffer(text.data(), text.size()) && document.save_file(name.c_str(), "  ");
}

}  // namespace

int main() {
    const std::string text = document_text();
    const std::string ours = name_in_scratch("nmk_benchmark_ours.xml");
    const std::string peer = name_in_scratch("nmk_benchmark_peer.xml");
    const auto taken = stopwatch::in_turns(
        rounds, [&] { return save_ours(text, ours); },
        [&] { return save_with_pugixml(text, peer); });
    const bool is_same = taken.same && content_of(ours) == content_of(peer);
    std::filesystem::remove(ours);
    std::filesystem::remove(peer);
    const bool reached = stopwatch::report("axmDocumentFactory_parse_and_save_50_MB", taken.ours,
                                           taken.peer, target, is_same);
    return reached ? 0 : 1;
}
