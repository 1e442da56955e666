#include <filesystem/random_number.h>
#include <unistd.h>

namespace nmk_filesystem {

bool random_number(std::uint64_t& number) { return ::getentropy(&number, sizeof number) == 0; }

}  // namespace nmk_filesystem
