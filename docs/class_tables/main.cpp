// Writes the page of the container classes, or holds a page against them:
//   class_tables FILE          writes the page
//   class_tables --check FILE  tells the first line that differs; the exit status is 1 then
#include "Classes.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace class_tables;

using Classes = std::vector<ClassTable>;

const char* const introduction =
    "# Classes\n"
    "\n"
    "The container classes of the library with the attributes and fields that they declare. A "
    "program "
    "writes this page from\n"
    "the definitions, and a test compares the two: `cmake --build build/test --target class_docs` "
    "writes it anew.\n"
    "\n"
    "Each attribute has three accessors named after its key: `Key()` gives the value, `Key(value)` "
    "sets it, and `Attr_Key()`\n"
    "gives the attribute itself. Tokens continue those of the base. A category is a sum: 2 says "
    "that "
    "the attribute has its\n"
    "definition flag, 4 stands for the name alone, 16 for what a class of the domain declares, 32 "
    "for what no stream holds.\n";

void printTree(std::ostream& page, const Classes& classes, const std::string& base, int depth) {
    for (const ClassTable& table : classes) {
        if (table.base != base) continue;
        page << "    " << std::string(static_cast<std::size_t>(depth) * 2, ' ') << table.name
             << '\n';
        printTree(page, classes, table.name, depth + 1);
    }
}

void printAttributes(std::ostream& page, const ClassTable& table) {
    if (table.attributes.empty()) return;
    page << "\n| Token | Key | Type | In streams | Default | Category |\n"
            "|---|---|---|---|---|---|\n";
    for (const AttributeRow& row : table.attributes)
        page << "| " << row.token << " | `" << row.key << "` | `" << row.type << "` | `"
             << row.streamType << "` | " << row.defaultText << " | " << row.category << " |\n";
}

void printFields(std::ostream& page, const ClassTable& table) {
    if (table.fields.empty()) return;
    page << "\n| Field | Key | Class |\n|---|---|---|\n";
    for (const FieldRow& row : table.fields)
        page << "| " << row.token << " | `" << row.key << "` | `" << row.className << "` |\n";
}

void printClass(std::ostream& page, const ClassTable& table) {
    page << "\n## " << table.name << "\n\n";
    page << (table.base.empty() ? "The base of all others." : "Below `" + table.base + "`.");
    if (table.firstName != table.name) page << " A new one is named \"" << table.firstName << "\".";
    for (const OtherStart& start : table.otherStarts)
        page << " A new one has `" << start.key << "` " << start.text << '.';
    if (!table.isRegistered) page << " The factory does not make it.";
    if (table.attributes.empty() && table.fields.empty()) page << " No rows of its own.";
    page << '\n';
    printAttributes(page, table);
    printFields(page, table);
}

std::string makePage() {
    const Classes classes = collectClasses();
    std::ostringstream page;
    page << introduction << "\n## The tree\n\n";
    printTree(page, classes, {}, 0);
    for (const ClassTable& table : classes) printClass(page, table);
    return std::move(page).str();
}

// The number and the text of the first line that differs, for people.
std::string firstDifference(const std::string& wanted, const std::string& found) {
    const auto [inWanted, inFound] =
        std::mismatch(wanted.begin(), wanted.end(), found.begin(), found.end());
    const auto begin = std::find(std::make_reverse_iterator(inWanted), wanted.rend(), '\n').base();
    return "line " + std::to_string(std::count(wanted.begin(), begin, '\n') + 1) +
           " should be\n  " + std::string(begin, std::find(begin, wanted.end(), '\n'));
}

int check(const std::string& file, const std::string& page) {
    std::ifstream stream(file, std::ios::binary);
    const std::string found(std::istreambuf_iterator<char>(stream), {});
    if (found == page) return 0;
    std::cerr << file << ": " << firstDifference(page, found)
              << "\nThe target class_docs writes the page anew.\n";
    return 1;
}

int write(const std::string& file, const std::string& page) {
    std::ofstream stream(file, std::ios::binary);
    stream << page;
    stream.close();
    if (stream) return 0;
    std::cerr << file << ": cannot be written\n";
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    const bool isCheck = words.size() == 2 && words[0] == "--check";
    if (!isCheck && words.size() != 1) {
        std::cerr << "usage: class_tables [--check] FILE\n";
        return 2;
    }
    try {
        const std::string page = makePage();
        return isCheck ? check(words[1], page) : write(words[0], page);
    } catch (const std::exception& failure) {
        std::cerr << "class_tables: " << failure.what() << '\n';
        return 1;
    }
}
