// How a dying observer reaches the table of the copying action that runs on its thread.
#pragma once

namespace QOR::AttributeContainer {

class Observer;

/// No copied relation may be pointed at `observer` any more. Costs nothing while no copying runs.
void forgetInCurrentTable(const Observer& observer);

}  // namespace QOR::AttributeContainer
