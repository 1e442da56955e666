#include <apsl/apstrcasecmp.h>

namespace {

int folded(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 'A' && value <= 'Z' ? value - 'A' + 'a' : value;
}

}  // namespace

int apstrcasecmp(const char* left, const char* right) noexcept {
    if (left == nullptr || right == nullptr) {
        return (left != nullptr ? 1 : 0) - (right != nullptr ? 1 : 0);
    }
    while (*left != '\0' && folded(*left) == folded(*right)) {
        ++left;
        ++right;
    }
    return folded(*left) - folded(*right);
}
