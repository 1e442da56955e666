#include "malformed.h"

namespace nmk_absxml {

Place place_of(std::string_view text, std::size_t offset) {
    Place place{1, 1};
    for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
        const char byte = text[i];
        const bool is_pair = byte == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (byte == '\n' || (byte == '\r' && !is_pair)) {
            ++place.line;
            place.column = 1;
        } else if (!is_pair && (static_cast<unsigned char>(byte) & 0xC0U) != 0x80) {
            ++place.column;
        }
    }
    return place;
}

}  // namespace nmk_absxml
