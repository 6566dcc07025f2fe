// The project tree of the example.
#pragma once

#include "Observers.h"
#include "Scan.h"

#include <AttributeContainer/Container.h>

#include <cstdint>
#include <memory>
#include <string>

namespace example {

/// A project with its scans:
///
///     Project                 a Container
///       Scans                 a Container: NumScans, NumPoints
///         <a scan each>       a Transform: NumPoints, Points, Normals where it has some, UUID
///           ScanProperties    a field: distances, bounding box, normals
///           Nearest, Farthest markers at these points
///           Panorama          with its colour settings and their tone mapping as fields
///       <a track each>        a Container of Transforms, one for each pose
///
/// A printer watches the number of all points, a guard the names of the scans. Relations do not own
/// whom they lead to, so the document does.
class Document {
public:
    Document();

    /// Adds a scan under its name, or under one like it where that is refused or taken.
    /// \return the new object
    std::shared_ptr<model::Object> addScan(const Scan& scan);

    /// Adds a track in the same way. \return the container of its poses
    std::shared_ptr<model::Object> addTrack(const Track& track);

    model::Object& getRoot() const { return *root; }

private:
    std::shared_ptr<model::Container> root;
    std::shared_ptr<model::Container> scans;
    std::shared_ptr<model::Attr<std::uint64_t>> numScans;
    std::shared_ptr<model::Attr<std::uint64_t>> numPoints;
    std::shared_ptr<ChangePrinter> printer;
    std::shared_ptr<NameGuard> guard;
};

}  // namespace example
