// Built twice with hidden visibility: as a library that the test is linked with, and as a plugin
// that exports nothing but the function below.
#include <collections/nil_library/nil_library.h>

extern "C" __attribute__((visibility("default"))) nmk_test::NilAddresses nil_addresses_in_library();

extern "C" nmk_test::NilAddresses nil_addresses_in_library() { return nmk_test::nil_addresses(); }
