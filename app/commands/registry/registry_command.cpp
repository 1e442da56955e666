// registry_command: `nmk registry`: lists and changes the registry.

#include "commands/registry/registry_command.h"

#include <winapi/last_error.h>

#include "commands/registry/registry_json.h"
#include "commands/registry/registry_options.h"
#include "commands/registry/registry_session.h"
#include "commands/registry/registry_text.h"
#include "commands/registry/registry_tree.h"
#include "files/read_whole_file.h"
#include "files/write_all_files.h"
#include "shell/command_result.h"
#include "text/escaped_text.h"

namespace nmk_registry {

namespace {

std::string listed(const RegistryOptions& options, const KeyPath& path) {
    const Key tree = read_tree(path);
    if (options.json) return document_json({key_path_text(path), tree});
    return options.quiet ? "" : tree_text(key_path_text(path), tree);
}

std::string list(const RegistryOptions& options) {
    if (options.has_key) return listed(options, options.key);
    std::string text;
    for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS}) {
        text += listed(options, {root, {}});
    }
    return text;
}

std::string get(const RegistryOptions& options) {
    const Value value = OpenKey(options.key, KEY_READ).value(options.value.name);
    if (options.json) return document_json({key_path_text(options.key), {{}, {value}, {}}});
    return options.quiet ? "" : plain_data_text(value);
}

std::string set(const RegistryOptions& options) {
    OpenKey::created(options.key).set(options.value);
    return {};
}

std::string erase(const RegistryOptions& options) {
    if (options.has_name) {
        OpenKey(options.key, KEY_READ | KEY_WRITE).erase(options.value.name);
        return {};
    }
    const bool has_subkeys = !OpenKey(options.key, KEY_READ).subkeys().empty();
    if (has_subkeys && !options.recursive) {
        throw Failure{static_cast<LSTATUS>(ERROR_ACCESS_DENIED),
                      nmk_text::line_text(key_path_text(options.key)) +
                          ": has subkeys; --recursive deletes it with all that is below it"};
    }
    delete_key(options.key, options.recursive);
    return {};
}

std::string copy(const RegistryOptions& options) {
    copy_tree(options.key, options.target);
    return {};
}

nmk_text::Result<std::string> export_tree(const RegistryOptions& options) {
    const std::string text = document_json({key_path_text(options.key), read_tree(options.key)});
    if (options.output_file.empty()) return text;
    const auto written = nmk_files::write_all_files({{options.output_file, text}});
    if (!written) return written.error();
    return options.quiet ? "" : "Wrote " + nmk_text::line_text(options.output_file) + ".\n";
}

nmk_text::Result<std::string> import_tree(const RegistryOptions& options,
                                          const Document& document) {
    KeyPath target = options.key;
    if (!options.has_key) {
        const auto path = read_key_path(document.path);
        if (!path)
            return path.error().in_file(nmk_files::input_name(options.input_file) + ": path");
        target = *path;
    }
    write_tree(document.tree, target);
    return options.quiet ? "" : "Wrote " + nmk_text::line_text(key_path_text(target)) + ".\n";
}

// The document of an import; empty for other actions.
nmk_text::Result<Document> read_input(const RegistryOptions& options) {
    if (options.action != Action::import_tree) return Document{};
    const auto text = nmk_files::read_input(options.input_file);
    if (!text) return text.error();
    return read_document(nmk_files::input_name(options.input_file), *text);
}

nmk_text::Result<std::string> perform(const RegistryOptions& options, const Document& document) {
    switch (options.action) {
        case Action::list:
            return list(options);
        case Action::get:
            return get(options);
        case Action::set:
            return set(options);
        case Action::erase:
            return erase(options);
        case Action::copy:
            return copy(options);
        case Action::export_tree:
            return export_tree(options);
        default:
            return import_tree(options, document);
    }
}

int fail(std::ostream& err, int code, const std::string& message) {
    nmk_shell::refuse(err, "nmk registry: " + message);
    return code;
}

int run_registry(const RegistryOptions& options, std::ostream& out, std::ostream& err) {
    const auto document = read_input(options);
    if (!document) return nmk_shell::refuse(err, document.error().text());
    const Session session(options.seconds);
    if (!session.problem().empty()) {
        return fail(err, session.is_busy() ? nmk_shell::no_result : nmk_shell::bad_input,
                    session.problem());
    }
    try {
        const auto printed = perform(options, *document);
        if (!printed) return nmk_shell::refuse(err, printed.error().text());
        out << *printed;
        return nmk_shell::finish(out, err, "the registry");
    } catch (const Failure& failure) {
        const bool is_missing = failure.status == ERROR_FILE_NOT_FOUND;
        return fail(err, is_missing ? nmk_shell::no_result : nmk_shell::bad_input, failure.message);
    }
}

}  // namespace

nmk_shell::Run declare_registry(nmk_shell::OptionTable& table) {
    return nmk_shell::declare_command<RegistryOptions>(table, declare_registry_options,
                                                       run_registry);
}

}  // namespace nmk_registry
