// tsplib_writer: writes a TSPLIB instance again with its nodes in another order.

#include "formats/tsplib/tsplib_writer.h"

#include <string_view>
#include <vector>

#include "text/ascii.h"
#include "text/text_lines.h"

namespace nmk_tsplib {

namespace {

/// The lines of the nodes, in the order of the file, as the reader finds them.
std::vector<nmk_text::TextLine> node_lines(std::string_view text) {
    std::vector<nmk_text::TextLine> nodes;
    nmk_text::TextLines lines(text);
    bool in_section = false;
    for (nmk_text::TextLine line; lines.next(line);) {
        const std::string_view content = nmk_text::trimmed(line.text);
        if (content == "EOF") {
            break;
        }
        if (content == "NODE_COORD_SECTION" || content == "NODE_COORD_SECTION:") {
            in_section = true;
        } else if (in_section && !content.empty()) {
            nodes.push_back(line);
        }
    }
    return nodes;
}

}  // namespace

std::string write_tsplib(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order) {
    const std::string_view text = job.text;
    const std::vector<nmk_text::TextLine> nodes = node_lines(text);
    std::string result;
    result.reserve(text.size());
    std::size_t at = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        result += text.substr(at, nodes.at(i).begin - at);
        result += nodes.at(order[i].item).text;
        at = nodes[i].begin + nodes[i].text.size();
    }
    return result += text.substr(at);
}

}  // namespace nmk_tsplib
