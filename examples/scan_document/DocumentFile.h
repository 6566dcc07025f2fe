// A document as a model stream, in memory and in a file.
#pragma once

#include <AttributeContainer/Object.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace example {

namespace model = QOR::AttributeContainer;

/// The model stream of a tree: a header with the version of the format, then the tree.
/// \param expectedSize how many bytes will come, for the progress; 0 where nobody knows.
/// \throws ModelFailure
std::string writeDocument(model::Object& root, std::uint64_t expectedSize);

/// A new tree with the content of a model stream.
/// \throws ModelFailure, also for a stream of a newer format.
std::shared_ptr<model::Object> readDocument(const std::string& text);

/// Puts a text into a file, in one piece. \throws std::runtime_error
void storeText(const std::filesystem::path& file, const std::string& text);

/// The text of a file. \throws std::runtime_error
std::string loadText(const std::filesystem::path& file);

}  // namespace example
