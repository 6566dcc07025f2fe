// W1: an attribute of ours, watched through relations with the actions Notify and PreNotify.
#include "notify/Notify.h"
#include "notify/WatchedAttribute.h"

namespace {

BENCH_PEER("W1", "ours", Ours,
           [](bench::Run& run) { bench::notify::runAll<bench::notify::WatchedAttribute>(run); });

}  // namespace
