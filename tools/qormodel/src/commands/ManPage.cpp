#include "commands/ManPage.h"

#include <string_view>

namespace qormodel {

namespace {
constexpr std::string_view head = R"(.TH QORMODEL 1 "" "qormodel" "User Commands"
.SH NAME
qormodel \- look at, change, compare and merge model files
.SH SYNOPSIS
.B qormodel
[\fB\-\-color\fR \fIauto\fR|\fIalways\fR|\fInever\fR]
.I command
[\fIoption\fR ...] [\fIargument\fR ...]
.SH DESCRIPTION
A model file holds a tree of objects with named, typed attributes, as programs over the library
.B QOR.AttributeContainer
write it.
.B qormodel
reads its text form. A path such as
.I /Scans/First/Points
names objects and fields from the root on and, last, an attribute. The file name
.B \-
stands for the standard input, and behind
.B \-o
for the standard output.
.PP
Data goes to the standard output, everything else to the standard error output in the form
.IR "qormodel: FILE:LINE: PATH: text" .
With
.B \-\-json
a command prints one object with the members
.I version
and
.IR command .
.PP
A command that changes a file writes a new one beside it and then puts that into its place; the old
one stays as
.IR FILE~ .
Where something in the file would not come back, it is left alone and what would get lost is told.
Two runs that change one file take turns, and a file that another program has changed since it was
read is left alone.
.SH COMMANDS
)";

constexpr std::string_view tail = R"(.SH EXIT STATUS
.TP
.B 0
Done; the same; nothing found.
.TP
.B 1
Differences, problems or conflicts were found, something would get lost, or there is no value.
.TP
.B 2
Bad usage, or a file that cannot be read, cannot be written or is broken. Nothing was printed on
the standard output.
A reader that closes the standard output early is no failure.
.TP
.B 3
Warnings, where
.B \-\-strict
makes them count.
.SH ENVIRONMENT
.TP
.B NO_COLOR
If set to anything, there are no colours unless
.B \-\-color always
asks for them.
.TP
.B PAGER
What shows long output on a terminal;
.I less
by default, nothing if empty.
.TP
.B LESS
What
.I less
is told;
.I FRX
by default.
.SH FILES
.TP
.I FILE~
The content of
.I FILE
ahead of the last change.
)";

// A text in which nothing is taken for a command of the page.
std::string plain(std::string_view text) {
    std::string result;
    bool isLineStart = true;
    for (const char character : text) {
        if (isLineStart && (character == '.' || character == '\'')) result += "\\&";
        isLineStart = character == '\n';
        if (character == '\\') result += "\\e";
        else if (character == '-') result += "\\-";
        else result += character;
    }
    return result;
}

std::string argumentOf(const CLI::Option& option) {
    if (option.get_items_expected_max() == 0) return "";  // a flag
    const std::string& text = option.get_option_text();
    return " \\fI" + plain(text.empty() ? option.get_type_name() : text) + "\\fR";
}

std::string describe(const CLI::Option& option) {
    const bool isNamed = option.nonpositional();
    const std::string name = isNamed ? option.get_name(false, true) : option.get_name(true);
    return ".TP\n" + (isNamed ? "\\fB" + plain(name) + "\\fR" + argumentOf(option)
                              : "\\fI" + plain(name) + "\\fR") +
           '\n' + plain(option.get_description()) + '\n';
}

// The lines of a footer stand as they are.
std::string describeFooter(const CLI::App& command) {
    return command.get_footer().empty()
               ? ""
               : ".PP\n.nf\n" + plain(command.get_footer()) + "\n.fi\n";
}

std::string synopsisOf(const CLI::App& command, const std::string& name) {
    std::string line = ".SS \"" + name;
    for (const auto* const option : command.get_options()) {
        if (option->nonpositional()) continue;
        const std::string argument = option->get_name(true);
        line += option->get_required() ? ' ' + argument : " [" + argument + ']';
    }
    return line + "\"\n";
}

bool isShownCommand(const CLI::App* command) { return !command->get_group().empty(); }

/// \param name with the names of the groups that the command is in
std::string describe(const CLI::App& command, const std::string& name) {
    std::string text = synopsisOf(command, name) + plain(command.get_description()) + ".\n";
    for (const auto* const option : command.get_options())
        if (option->get_name() != "--help") text += describe(*option);
    text += describeFooter(command);
    for (const auto* const each : command.get_subcommands(isShownCommand))
        text += describe(*each, name + ' ' + each->get_name());
    return text;
}
}  // namespace

std::string manPageOf(const CLI::App& program) {
    std::string page(head);
    for (const auto* const command : program.get_subcommands(isShownCommand))
        page += describe(*command, command->get_name());
    return page.append(tail);
}

}  // namespace qormodel
