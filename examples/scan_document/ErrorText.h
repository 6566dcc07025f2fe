// An error of the library as text for people.
#pragma once

#include <QOR/ErrorCode.h>

#include <stdexcept>
#include <string>

namespace example {

using ModelError = QOR::ErrorHandling::ErrorWithCode<QOR::AttributeContainer::ErrorCode>;

/// Code, description where there is one, infos and place, with the same for what led to it.
std::string describe(const ModelError& error);

/// A step with the library that failed, which ends the program.
class ModelFailure : public std::runtime_error {
public:
    ModelFailure(const std::string& step, const std::string& what)
        : std::runtime_error(step + ": " + what) {}
    ModelFailure(const std::string& step, const ModelError& error)
        : ModelFailure(step, describe(error)) {}
};

}  // namespace example
