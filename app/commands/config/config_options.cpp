// config_options: the command line of `nmk config`.

#include "commands/config/config_options.h"

#include <nmktoolbox/xml/nmkConfXMLBase.h>

#include <algorithm>
#include <charconv>
#include <span>
#include <string_view>

#include "files/read_whole_file.h"
#include "shell/command_result.h"

namespace nmk_config {

namespace {

using nmk_shell::Problem;

constexpr nmk_shell::Choice<Action> actions[] = {
    {"show", Action::show, "print the file that is chosen, its root and its version"},
    {"validate", Action::validate, "check the document, and print its problem"},
    {"new", Action::make, "make an empty document of the newest version"},
};

constexpr std::string_view extension = ".xml";

// A range is walked version by version, so it is kept small.
constexpr int max_version = 9999;

std::optional<int> version_of(std::string_view text) {
    int version = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, version);
    const bool is_version =
        error == std::errc() && stop == end && version >= 0 && version <= max_version;
    return is_version ? std::optional(version) : std::nullopt;
}

Problem read_versions(const std::string& text, std::optional<VersionRange>& versions) {
    const std::string_view whole = text;
    const std::size_t dots = whole.find("..");
    const auto least = version_of(whole.substr(0, dots));
    const auto greatest = dots == whole.npos ? least : version_of(whole.substr(dots + 2));
    if (!least || !greatest || *least > *greatest) {
        return "expected MIN..MAX, two whole numbers from 0 to 9999 in ascending order";
    }
    versions = VersionRange{*least, *greatest};
    return {};
}

bool can_be_decoded(const std::string& text) {
    const utString name(text);
    return nmkConfXMLBase::ut_str(nmkConfXMLBase::ap_str(name)).view() == text;
}

Problem read_name(const std::string& text, ConfigName& name) {
    if (!can_be_decoded(text)) return "expected a name in UTF-8";
    name.text = text;
    const std::size_t slash = text.rfind('/');
    if (slash != text.npos) name.directory = text.substr(0, slash + 1);
    name.base = text.substr(name.directory.size());
    name.is_file = text.ends_with(extension) || text == nmk_files::standard_stream;
    if (name.is_file) name.base.resize(std::min(name.base.find('.'), name.base.size()));
    if (!name.is_file && name.base.empty())
        return "expected the name of a file or of a configuration";
    return {};
}

Problem check(const ConfigOptions& options) {
    const bool is_new = options.action == Action::make;
    if (!options.versions && (is_new || !options.name.is_file)) {
        return is_new ? "new needs --versions"
                      : "--versions is needed to choose among the files of " +
                            nmk_text::quoted(options.name.text) +
                            "; a name that ends in .xml is that file";
    }
    if (is_new && options.name.text == nmk_files::standard_stream) {
        return "new needs the name of a file";
    }
    if (is_new && options.json) return "--json goes with show and validate";
    if (!is_new && !options.root.empty()) return "--root goes with new";
    if (!is_new && options.force) return "--force goes with new";
    return {};
}

}  // namespace

void declare_config_options(nmk_shell::OptionTable& table, ConfigOptions& options) {
    table.describe(
        "Shows, checks and makes configuration documents in XML. NAME is a file that ends in .xml, "
        "or the beginning of the names NAME.01.xml, NAME.02.xml and so on: then the newest file of "
        "the versions is chosen, and NAME.xml where there is none.");
    table
        .positional_choice("ACTION", options.action, std::span(actions),
                           "what to do: show, validate or new")
        .is_required = true;
    nmk_shell::Argument& name = table.positional(
        "NAME", [&options](const std::string& text) { return read_name(text, options.name); },
        "the file, or the beginning of the names of its versions; - is standard input");
    name.is_required = true;
    name.completes = nmk_shell::Completes::files;
    table.group("Options");
    table.option(
        "--versions", "MIN..MAX",
        [&options](const std::string& text) { return read_versions(text, options.versions); },
        "the versions that are understood; a new document has the newest");
    table.option("--root", "ROOT", nmk_shell::text_setter(options.root),
                 "name of the root element of a new document; without it the NAME");
    table.option("--force", options.force, "replace a file that exists by the new document");
    table.group("Output");
    table.option("--json", options.json, "print what is found as JSON");
    table.option("--quiet", options.quiet, "print no text; JSON is still printed");
    table.check([&options] { return check(options); });
    table.exit_code(nmk_shell::no_result, "no file exists, or the document has a problem");
    table.example("nmk config show samples/config/machine --versions 1..3");
    table.example("nmk config validate samples/config/machine.02.xml");
    table.example("nmk config new machine --versions 1..2 --root machine");
}

}  // namespace nmk_config
