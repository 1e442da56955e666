// id_command: `nmk id new`, `nmk id show` and `nmk id dump`.

#include "commands/id/id_command.h"

#include <nmktoolbox/uniqueid/nmkUniqueId.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "commands/id/id_options.h"
#include "commands/id/identifier_stream.h"
#include "commands/id/print_objects.h"
#include "files/read_whole_file.h"
#include "shell/command_result.h"
#include "text/json_document.h"

namespace nmk_id {

namespace {

constexpr int schema = 1;

std::string new_identifier() {
    const std::unique_ptr<nmkUniqueId> identifier(nmkUniqueId::create());
    return std::string(identifier->hex_string().view());
}

void print_new_as_json(int count, std::ostream& out) {
    out << nmk_text::json_opening({{"schema", schema}}, "identifiers");
    for (int i = 0; i < count; ++i) {
        out << (i == 0 ? "\n  \"" : ",\n  \"") << new_identifier() << "\"";
    }
    out << "\n]}\n";
}

int make_identifiers(const IdOptions& options, std::ostream& out, std::ostream& err) {
    if (options.json) {
        print_new_as_json(options.count, out);
    } else if (!options.quiet) {
        for (int i = 0; i < options.count; ++i) out << new_identifier() << "\n";
    }
    return nmk_shell::finish(out, err, "the identifiers");
}

int show_identifier(const IdOptions& options, std::ostream& out, std::ostream& err) {
    if (options.json) {
        nmk_text::Json json = {{"schema", schema}};
        add_facts(json, options.identifier);
        out << nmk_text::json_document(json);
    } else if (!options.quiet) {
        out << facts_as_text(options.identifier);
    }
    return nmk_shell::finish(out, err, "the identifier");
}

template <class Printer>
std::optional<StreamStop> print_with(std::span<const unsigned char> bytes, std::ostream& out) {
    Printer printer(out);
    auto stop = read_identifier_stream(bytes, [&](const StoredObject& one) { printer.add(one); });
    printer.end();
    return stop;
}

std::optional<StreamStop> print_stream(std::span<const unsigned char> bytes,
                                       const IdOptions& options, std::ostream& out) {
    if (options.json) return print_with<ObjectJson>(bytes, out);
    if (!options.quiet) return print_with<ObjectTable>(bytes, out);
    return read_identifier_stream(bytes, [](const StoredObject&) {});
}

int dump_stream(const IdOptions& options, std::ostream& out, std::ostream& err) {
    const nmk_text::Result<std::string> read = nmk_files::read_input_bytes(options.argument);
    if (!read) return nmk_shell::refuse(err, read.error().text());
    const auto* const first = reinterpret_cast<const unsigned char*>(read->data());
    const std::optional<StreamStop> stop = print_stream({first, read->size()}, options, out);
    const int code = nmk_shell::finish(out, err, "the identifiers");
    if (code != nmk_shell::done || !stop) return code;
    return nmk_shell::refuse(err, nmk_files::input_name(options.argument) + ": offset " +
                                      std::to_string(stop->offset) + ": " + stop->message);
}

int run(const IdOptions& options, std::ostream& out, std::ostream& err) {
    switch (options.action) {
        case Action::make:
            return make_identifiers(options, out, err);
        case Action::show:
            return show_identifier(options, out, err);
        case Action::dump:
            return dump_stream(options, out, err);
    }
    return nmk_shell::bad_input;
}

}  // namespace

nmk_shell::Run declare_id(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<IdOptions>(table, declare_options, run);
}

}  // namespace nmk_id
