#include "commands/CommandLine.h"

#include "model/TypeWords.h"

#include <algorithm>
#include <utility>

namespace qormodel {

namespace {
std::vector<std::string> valuesIn(const std::string& text) {
    std::vector<std::string> values;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('|', begin), text.size());
        values.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return values;
}

ArgumentKind kindOf(const CLI::Option& option) {
    const bool isNamed = option.nonpositional();
    const std::string& told = option.get_option_text();
    const std::string text = told.empty() && !isNamed ? option.get_name(true) : told;
    if (text.find('|') != std::string::npos) return {ArgumentKind::Values, valuesIn(text)};
    if (text.starts_with("PATH")) return {ArgumentKind::Path};
    if (text == "COMMAND") return {ArgumentKind::Command};
    if (text == "TYPE") return {ArgumentKind::Values, listTypeWords()};
    if (text == "MODEL") return {ArgumentKind::Model};
    if (isNamed && option.check_lname("store")) return {ArgumentKind::Store};
    if (text == "FILE" || text.starts_with("PAGE")) return {ArgumentKind::File};
    if (isNamed && option.check_lname("base")) return {};  // a path of another system
    if (text == "KEY") return {ArgumentKind::Key};
    if (text == "VALUE") return {ArgumentKind::Value};
    if (text == "VALUE=TEXT") return {ArgumentKind::Setting};
    if (isNamed) return {};
    return {ArgumentKind::File};
}

OptionLine lineOf(const CLI::Option& option) {
    OptionLine line;
    for (const auto& name : option.get_lnames()) line.names.push_back("--" + name);
    for (const auto& name : option.get_snames()) line.names.push_back('-' + name);
    line.takesValue = option.get_items_expected_max() > 0;
    if (line.takesValue) line.value = kindOf(option);
    line.description = option.get_description();
    return line;
}

bool isShown(const CLI::App* command) { return !command->get_group().empty(); }

void add(const CLI::App& app, const std::string& path, std::vector<OptionLine> inherited,
         std::vector<CommandLine>& commands) {
    CommandLine line{path, app.get_description(), {}, {}, false, {}};
    for (const auto* const option : app.get_options()) {
        if (option->nonpositional()) {
            line.options.push_back(lineOf(*option));
            continue;
        }
        // One argument may have several words, as the two files of a comparison.
        const int number = option->get_items_expected_max();
        line.isLastRepeated = number > 10;
        const int numKnown = line.isLastRepeated ? 1 : std::max(number, 1);
        for (int i = 0; i < numKnown; ++i) line.arguments.push_back(kindOf(*option));
    }
    const auto own = line.options;
    line.options.insert(line.options.end(), inherited.begin(), inherited.end());
    for (const auto& option : own)
        if (option.names.front() != "--help") inherited.push_back(option);
    const auto subcommands = app.get_subcommands(isShown);
    for (const auto* const each : subcommands) line.subcommands.push_back(each->get_name());
    commands.push_back(std::move(line));
    for (const auto* const each : subcommands)
        add(*each, path.empty() ? each->get_name() : path + ' ' + each->get_name(), inherited,
            commands);
}
}  // namespace

std::vector<CommandLine> listCommandLines(const CLI::App& program) {
    std::vector<CommandLine> commands;
    add(program, "", {}, commands);
    return commands;
}

}  // namespace qormodel
