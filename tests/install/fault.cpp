// fault: a fault of the consumer's own code, thrown and caught.

#include <nmktoolbox.h>
#include <cstdio>

namespace {

const int* volatile place = nullptr;

// A compiler that is not handed the option takes this for a function that cannot throw.
__attribute__((noinline)) int read() { return *place; }

}  // namespace

int main() {
    nmkCExceptTrans::install();
    try {
        std::printf("%d\n", read());
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): faults are thrown as pointers
    } catch (nmkCExceptTrans* fault) {
        char message[64];
        fault->GetErrorMessage(message, sizeof message, nullptr);
        std::puts(message);
        fault->Delete();
    }
}
