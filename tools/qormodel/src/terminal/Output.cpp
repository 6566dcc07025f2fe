#include "terminal/Output.h"

#include "io/TargetBuffer.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

namespace qormodel {

namespace {
bool isTerminal() {
    return ::isatty(STDOUT_FILENO) == 1;
}

const char* codeOf(Output::Colour colour) {
    switch (colour) {
        case Output::Colour::Added: return "\033[32m";
        case Output::Colour::Removed: return "\033[31m";
        case Output::Colour::Changed: return "\033[33m";
        case Output::Colour::Unknown: return "\033[35m";
        case Output::Colour::Faint: return "\033[2m";
        case Output::Colour::Strong: return "\033[1m";
        case Output::Colour::Plain: break;
    }
    return "";
}

// The height of the terminal in lines.
long getHeight() {
    struct ::winsize size {};
    return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 0 ? size.ws_row : 24;
}

// Empty where the user wants none.
std::string pagerCommand() {
    const char* const wanted = std::getenv("PAGER");
    return wanted ? wanted : "less";
}
}  // namespace

void Output::setColourMode(ColourMode mode) {
    const char* const refused = std::getenv("NO_COLOR");
    const bool isRefused = refused && *refused != '\0';
    hasColours = mode == ColourMode::Always ||
                 (mode == ColourMode::Auto && isTerminal() && !isRefused);
}

std::string Output::in(Colour colour, std::string_view part) const {
    if (!hasColours || colour == Colour::Plain || part.empty()) return std::string(part);
    return codeOf(colour) + std::string(part) + "\033[0m";
}

void Output::flush() {
    if (text.empty() || flushThroughPager()) return;
    TargetBuffer buffer(STDOUT_FILENO, "standard output");
    buffer.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    buffer.finish();
    text.clear();
}

// False where there is no terminal, no need or no pager.
bool Output::flushThroughPager() {
    if (!isTerminal() || std::count(text.begin(), text.end(), '\n') < getHeight()) return false;
    const std::string command = pagerCommand();
    if (command.empty()) return false;
    ::setenv("LESS", "FRX", 0);  // colours as colours, whatever name less goes by
    std::FILE* const pager = ::popen(command.c_str(), "w");
    if (!pager) return false;
    std::fwrite(text.data(), 1, text.size(), pager);
    if (::pclose(pager) == 127 << 8) return false;  // the shell has not found it
    text.clear();
    return true;
}

std::string counted(std::uint64_t number, std::string_view what) {
    return fmt::format("{} {}{}", number, what, number == 1 ? "" : "s");
}

// Where nobody takes it, nothing is left to be done.
void printOnErrors(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void printNote(std::string_view line) {
    printOnErrors(fmt::format("qormodel: {}\n", line));
}

}  // namespace qormodel
