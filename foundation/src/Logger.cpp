#include <QOR/Logger.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace QOR {

namespace {

struct State {
    std::mutex mutex;  // guards the pointer, never held during a call of the sink
    std::shared_ptr<const Logger::Sink> sink;
    std::atomic<bool> hasSink = false;  // as `sink` was at some moment, for those who only look
};

State& state() {
    // Never destroyed: static objects may log while the process ends.
    static State& instance = *new State;
    return instance;
}

}  // namespace

void Logger::appendLogMsgExt(const std::string& message, int level, const char* file, int line,
                             const char* function) {
    // The copy keeps the sink alive if another thread replaces it, and lets a sink log itself.
    const auto sink = [] {
        const std::lock_guard lock(state().mutex);
        return state().sink;
    }();
    if (!sink) return;
    try {
        (*sink)({message, level, file, line, function});
    } catch (...) {
        // A failing log must not break the operation that reports to it.
    }
}

bool Logger::hasSink() { return state().hasSink; }

Logger::Sink Logger::setSink(Sink sink) {
    auto exchanged = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
    {
        const std::lock_guard lock(state().mutex);
        state().sink.swap(exchanged);
        state().hasSink = state().sink != nullptr;
    }
    return exchanged ? *exchanged : Sink{};
}

}  // namespace QOR
