// Text files of keys and values, as the registry editor of the home platform reads and writes them.
#pragma once

#include "io/SourceFile.h"
#include "store/StoreFile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qormodel {

/// The two forms of such files.
enum class RegForm {
    Version5,  ///< "Windows Registry Editor Version 5.00", UTF-16
    Version4,  ///< "REGEDIT4", one byte a character, of code page 1252
};

/// One line of the file that says what to do.
struct RegStep {
    enum class Kind { MakeKey, RemoveKey, SetValue, RemoveValue };

    Kind kind = Kind::MakeKey;
    std::uint64_t line = 0;
    std::wstring key;    ///< its path as the file has it
    std::wstring name;   ///< of the value; empty for the default value
    StoredValue value;
};

/// Whether the content begins as such a file does.
bool isRegFile(const SourceFile& source);

/// Reads the whole file. \throws Failure with the line and what was expected
std::vector<RegStep> readRegFile(const SourceFile& source);

/// A key with its values and all below it as such a file. Values come in the order of the store.
/// \param path of the key; all of the store where it is empty
/// \param base the path that stands in the file in the place of `path`
/// \throws Failure where the form cannot hold a text or a name
std::string writeRegFile(const StoreFile& store, const std::wstring& path,
                         const std::wstring& base, RegForm form);

}  // namespace qormodel
