// house_rules: checks a source tree by one rule, or by all.
//
//   house_rules ROOT RULE|all
//
// Prints one line for each finding on standard error and ends with 1 when there is one.
#include <cstdio>
#include <string_view>

#include "house/rules/rules.h"

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: house_rules ROOT RULE|all\n");
        return 2;
    }
    const std::string_view wanted = arguments[2];
    bool known = false;
    std::size_t found = 0;
    for (const nmk_house::Rule& rule : nmk_house::all_rules()) {
        if (wanted != "all" && wanted != rule.name) continue;
        known = true;
        for (const std::string& finding : rule.check(arguments[1])) {
            std::fprintf(stderr, "%s: %s\n", rule.name, finding.c_str());
            ++found;
        }
    }
    if (!known) std::fprintf(stderr, "house_rules: unknown rule %s\n", arguments[2]);
    return !known ? 2 : found > 0 ? 1 : 0;
}
