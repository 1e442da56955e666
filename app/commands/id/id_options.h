// id_options.h: the command line of `nmk id`.
#pragma once

#include <string>

#include "commands/id/identifier_words.h"
#include "shell/option_table.h"

namespace nmk_id {

/// The most identifiers that one run makes.
constexpr int max_new_identifiers = 1'000'000;

enum class Action { make, show, dump };

struct IdOptions {
    Action action = Action::make;
    std::string argument;        // N, HEX or FILE; empty: none
    int count = 1;               // of new identifiers
    IdentifierWords identifier;  // to show
    bool json = false;
    bool quiet = false;
};

/// Declares the options.
void declare_options(nmk_shell::OptionTable& table, IdOptions& options);

}  // namespace nmk_id
