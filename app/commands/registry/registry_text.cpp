// registry_text: a tree of keys as lines of text.

#include "commands/registry/registry_text.h"

#include "text/escaped_text.h"

namespace nmk_registry {

namespace {

// What is in front of an entry, and of what is below it.
struct Branch {
    const char* entry;
    const char* below;
};

constexpr Branch inner = {"├── ", "│   "};
constexpr Branch last = {"└── ", "    "};

std::string value_line(const Value& value) {
    const std::string name = value.name.empty() ? "(default)" : nmk_text::line_text(value.name);
    return name + " = " + data_text(value) + "  " + type_name(value.type) + "\n";
}

void append_below(const Key& tree, const std::string& front, std::string& text) {
    const std::size_t entries = tree.values.size() + tree.keys.size();
    std::size_t at = 0;
    const auto next = [&] { return ++at == entries ? last : inner; };
    for (const Value& value : tree.values) text += front + next().entry + value_line(value);
    for (const Key& key : tree.keys) {
        const Branch branch = next();
        text += front + branch.entry + nmk_text::line_text(escaped_name(key.name)) + "/\n";
        append_below(key, front + branch.below, text);
    }
}

}  // namespace

std::string tree_text(const std::string& heading, const Key& tree) {
    std::string text = nmk_text::line_text(heading) + "/\n";
    append_below(tree, {}, text);
    return text;
}

}  // namespace nmk_registry
