#include "house/rules/rules.h"

namespace nmk_house {

std::span<const Rule> all_rules() {
    static constexpr Rule rules[] = {{"include_arrows", include_arrows},
                                     {"umbrella_headers", umbrella_headers},
                                     {"no_prints", no_prints},
                                     {"speaks_for_itself", speaks_for_itself},
                                     {"readme_example", readme_example},
                                     {"names", names},
                                     {"wording", wording}};
    return rules;
}

}  // namespace nmk_house
