// Options that take one of several words.
#pragma once

#include <CLI/CLI.hpp>

#include <map>
#include <string>
#include <type_traits>

namespace qormodel {

/// Takes the words of `choices`, in any case, for the values beside them; for any other word the
/// message lists them.
template <class Value> CLI::Validator choiceOf(const std::map<std::string, Value>& choices) {
    static_assert(std::is_enum_v<Value>);
    const auto take = [choices](std::string& word) -> std::string {
        const auto found = choices.find(CLI::detail::to_lower(word));
        if (found == choices.end()) {
            std::string known;
            for (const auto& [name, value] : choices) known += (known.empty() ? "" : ", ") + name;
            return '"' + word + "\" is none of " + known;
        }
        word = std::to_string(static_cast<std::underlying_type_t<Value>>(found->second));
        return "";
    };
    CLI::Validator validator;
    validator.operation(take);
    return validator;
}

}  // namespace qormodel
