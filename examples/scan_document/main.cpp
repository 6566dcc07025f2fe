// Builds a document from laser scans, stores it as a model stream, reads it back and holds the two
// against each other:
//   scan_document [--output FILE] [--track FILE] [point files...]
// Without point files it makes a scan of a room. A track gives the poses of a sensor. The exit
// status is 0 if the tree that was read equals the one that was written and gives the same bytes
// when it is written again, 1 if not, and 2 for bad arguments, point files that cannot be read, and
// files that cannot be written.
#include "Compare.h"
#include "Document.h"
#include "DocumentFile.h"
#include "ErrorText.h"
#include "Progress.h"
#include "Room.h"
#include "Table.h"

#include <QOR/Uuid.h>
#include <points/PointFile.h>
#include <points/TrackFile.h>

#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace {

using namespace example;

constexpr int equal = 0;
constexpr int different = 1;
constexpr int badInput = 2;

const char* const usage =
    "usage: scan_document [--output FILE] [--track FILE] [point files...]\n"
    "  Point files hold x,y,z[,nx,ny,nz] lines, legacy VTK text, or PLY.\n"
    "  Without any, a scan of a room is made.\n"
    "  --output FILE  keeps the document in this file\n"
    "  --track FILE   adds the track of a sensor, legacy VTK text, as poses\n";

struct Arguments {
    std::vector<std::filesystem::path> pointFiles;
    std::optional<std::filesystem::path> output;
    std::optional<std::filesystem::path> track;
    bool help = false;
};

// Empty for arguments that make no sense.
std::optional<Arguments> parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--help" || words[i] == "-h") {
            arguments.help = true;
        } else if (words[i] == "--output" || words[i] == "--track") {
            auto& file = words[i] == "--output" ? arguments.output : arguments.track;
            if (++i == words.size()) return std::nullopt;
            file = words[i];
        } else if (words[i].starts_with("--")) {
            return std::nullopt;
        } else {
            arguments.pointFiles.emplace_back(words[i]);
        }
    }
    return arguments;
}

// Where the document goes. Without a file from the user that is one among the temporary files,
// which goes away with this object.
class OutputFile {
public:
    explicit OutputFile(const std::optional<std::filesystem::path>& wanted)
        : file(wanted ? *wanted : temporaryFile()), isTemporary(!wanted) {}
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile() {
        std::error_code ignored;
        if (isTemporary) std::filesystem::remove(file, ignored);
    }

    const std::filesystem::path& path() const { return file; }

private:
    static std::filesystem::path temporaryFile() {
        return std::filesystem::temp_directory_path() /
               ("scan_document-" + QOR::uuids::uuid::generate().toString() + ".model");
    }

    std::filesystem::path file;
    bool isTemporary;
};

// The time that `step` takes is added to `time`. \return what the step gives
template <class Step> auto timed(Seconds& time, const Step& step) {
    const auto start = std::chrono::steady_clock::now();
    auto result = step();
    time += std::chrono::steady_clock::now() - start;
    return result;
}

// Reads a file with one of the readers, and shows how far it is.
template <class Read> auto readShown(const std::filesystem::path& file, const Read& read) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    Progress progress("reading " + file.filename().string(), error ? 0 : size);
    return read(file, [&](std::uint64_t done, std::uint64_t) { progress.show(done); });
}

std::vector<Scan> takeScans(const std::vector<std::filesystem::path>& files) {
    std::vector<Scan> scans;
    for (const auto& file : files) scans.push_back(readShown(file, points::readPointFile));
    if (files.empty()) scans.push_back(makeRoom());
    return scans;
}

// `name(text)` sets the attribute as any other is set: whoever observes it can refuse. The caller
// learns of a veto by looking at the value.
void tryName(model::Object& scan, const std::string& name) {
    std::cout << "renaming " << scan.inqObjPath().value_or("?") << " to \"" << name << "\"\n";
    scan.name(name);
    std::cout << "  its name is " << scan.getName() << '\n';
}

void addTrack(Document& document, const std::filesystem::path& file, Summary& summary) {
    const Track track = readShown(file, points::readTrackFile);
    std::cout << "adding the track " << track.name << ", " << track.poses.size() << " poses\n";
    const auto poses = timed(summary.build, [&] { return document.addTrack(track); });
    summary.numPoses += poses->getNumChildren();
}

int run(const Arguments& arguments) {
    const std::vector<Scan> scans = takeScans(arguments.pointFiles);
    Summary summary;
    Document document;
    if (arguments.track) addTrack(document, *arguments.track, summary);
    for (const Scan& scan : scans) {
        std::cout << "adding " << scan.name << ", " << scan.points.size() << " points\n";
        const auto object = timed(summary.build, [&] { return document.addScan(scan); });
        summary.numPoints += scan.points.size();
        if (&scan != &scans.front()) continue;
        tryName(*object, "tmp-1");
        tryName(*object, "");
    }

    const OutputFile file(arguments.output);
    const std::string text =
        timed(summary.write, [&] { return writeDocument(document.getRoot(), 0); });
    storeText(file.path(), text);
    std::cout << "stored in " << file.path().string()
              << (arguments.output ? "\n" : ", for now; --output FILE keeps it\n");

    const std::string stored = loadText(file.path());
    const auto second = timed(summary.read, [&] { return readDocument(stored); });
    summary.comparison =
        timed(summary.compare, [&] { return compareTrees(document.getRoot(), *second); });
    summary.numBytes = text.size();
    summary.isSameText = writeDocument(*second, text.size()) == text;
    printTable(summary);
    return summary.isEqual() ? equal : different;
}

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = parse({argv + 1, argv + argc});
    if (!arguments || arguments->help) {
        (arguments ? std::cout : std::cerr) << usage;
        return arguments ? equal : badInput;
    }
    try {
        return run(*arguments);
    } catch (const ModelFailure& failure) {
        std::cerr << "scan_document: " << failure.what() << '\n';
        return different;  // what was written is not what came back
    } catch (const std::exception& failure) {
        std::cerr << "scan_document: " << failure.what() << '\n';
        return badInput;
    }
}
