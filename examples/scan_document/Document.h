// The project tree of the example.
#pragma once

#include "Observers.h"
#include "Scan.h"

#include <AttributeContainer/Object.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace example {

/// A project with its scans:
///
///     Project
///       Scans            NumScans, NumPoints
///         <a scan each>  NumPoints, Points, Normals where it has some, UUID
///           BoundingBox  a field: Min, Max
///
/// A printer watches the number of all points, a guard the names of the scans. Relations do not own
/// whom they lead to, so the document does.
class Document {
public:
    Document();

    /// Adds a scan under its name, or under one like it where that is refused or taken.
    /// \return the new object
    std::shared_ptr<model::Object> addScan(const Scan& scan);

    model::Object& getRoot() const { return *root; }

private:
    std::shared_ptr<model::Object> root;
    std::shared_ptr<model::Object> scans;
    std::shared_ptr<model::Attr<std::uint64_t>> numScans;
    std::shared_ptr<model::Attr<std::uint64_t>> numPoints;
    std::shared_ptr<ChangePrinter> printer;
    std::shared_ptr<NameGuard> guard;
};

}  // namespace example
