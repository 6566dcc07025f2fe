#include "commands/Writing.h"

#include "model/ScanTree.h"
#include "terminal/Progress.h"

#include <points/PointFile.h>
#include <points/TrackFile.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace qormodel {

namespace {
using Colour = Output::Colour;

struct Options {
    std::string file;
    std::vector<std::string> scans;
    std::vector<std::string> tracks;
    std::string name;
    bool isForced = false;
    bool isDryRun = false;
};

constexpr const char* title = "qormodel project";

// An existing file is somebody's work, and this command takes nothing over from it.
void checkTarget(const Options& options) {
    std::error_code error;
    if (options.file != "-" && !options.isForced && std::filesystem::exists(options.file, error))
        throw Failure(Place{options.file}, "is there already; --force replaces it");
}

void checkInputs(const Options& options) {
    const auto numDashes = std::count(options.scans.begin(), options.scans.end(), "-") +
                           std::count(options.tracks.begin(), options.tracks.end(), "-");
    if (numDashes > 1) throw Failure("only one file can be the standard input");
}

std::string nameOf(const Options& options) {
    if (!options.name.empty()) return options.name;
    std::string name = std::filesystem::path(options.file).stem().string();
    if (options.file == "-" || !ac::AttrContainer::makeNameValid(name)) return "Project";
    return name;
}

template <class Read> auto readWithProgress(const std::string& name, const Read& read) {
    const std::string file = name == "-" ? "/dev/stdin" : name;
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    Progress progress("reading " + (name == "-" ? "stdin" : name), error ? 0 : size);
    return read(file, [&](std::uint64_t done, std::uint64_t) { progress.show(done); });
}

void run(const Options& options, Session& session) {
    checkTarget(options);
    checkInputs(options);
    ScanTree tree(nameOf(options));
    const bool isQuiet = options.file == "-";
    const auto report = [&](const std::string& path, std::size_t count, const char* what) {
        if (isQuiet) return;
        session.output.print("{} {}: {}\n", session.output.in(Colour::Added, "+"), path,
                             counted(count, what));
    };
    for (const auto& file : options.scans) {
        auto scan = readWithProgress(file, points::readPointFile);
        const std::size_t count = scan.points.size();
        report(tree.addScan(std::move(scan)), count, "point");
    }
    for (const auto& file : options.tracks) {
        const auto track = readWithProgress(file, points::readTrackFile);
        report(tree.addTrack(track), track.poses.size(), "pose");
    }
    Document document;
    document.file = options.file;
    document.outline.title = title;
    document.root = tree.getRoot();
    WriteFlags flags;
    flags.dryRun = options.isDryRun;
    storeDocument(document, flags);
}
}  // namespace

void addNew(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("new", "Make a project from point files");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "Model file to make, - for the standard output")
        ->required();
    command
        ->add_option("--scan", options->scans,
                     "Add a scan: x,y,z[,nx,ny,nz] lines, legacy VTK text or PLY; - for the "
                     "standard input")
        ->allow_extra_args(false)
        ->option_text("FILE");
    command
        ->add_option("--track", options->tracks,
                     "Add the track of a sensor: legacy VTK text, a pose for each point")
        ->allow_extra_args(false)
        ->option_text("FILE");
    command->add_option("--name", options->name, "Name of the project; else that of the file");
    command->add_flag("--force", options->isForced, "Replace a file that is there");
    command->add_flag("--dry-run", options->isDryRun, "Tell what would be done, write nothing");
    command->footer(
        "Coordinates are kept with eight digits behind the point.\n\n"
        "Example:\n  qormodel new hall.model --scan points.txt --name Hall");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
