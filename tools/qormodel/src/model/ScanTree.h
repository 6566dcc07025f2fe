// The tree of a project that is made from point files.
#pragma once

#include <AttributeContainer/Object.h>

#include <points/Scan.h>

#include <memory>
#include <string>

namespace qormodel {

namespace ac = QOR::AttributeContainer;

/// A project that grows:
///
///     <name>              UUID
///       Scans             a Container: NumScans, NumPoints
///         <a scan each>   a Transform: NumPoints, Points, Normals where it has some, UUID
///           BoundingBox   a field: Min, Max
///       <a track each>    a Container: NumPoses, UUID; a Transform for each pose below it
class ScanTree {
public:
    /// \throws Failure for what is no name
    explicit ScanTree(const std::string& name);

    /// Adds a scan under its name, or under one like it where that is no name or is taken. The
    /// instrument stands at the origin. \return the path of the scan
    std::string addScan(points::Scan scan);
    /// Adds a track in the same way. \return its path
    std::string addTrack(const points::Track& track);

    const std::shared_ptr<ac::Object>& getRoot() const { return root; }

private:
    std::shared_ptr<ac::Object> root;
    std::shared_ptr<ac::Object> scans;
};

}  // namespace qormodel
