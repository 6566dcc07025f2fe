// Where the library's messages go.
#pragma once

#include <QOR/Export.h>

#include <functional>
#include <string>

namespace QOR {

/// One message of the log. The pointers are those of the call and may be null; with the literals
/// that the library passes they last as long as the library is loaded.
struct LogRecord {
    std::string message;
    int level = 0;  ///< 1: a new error, 3: trouble handled on the spot, 8: tracing
    const char* file = nullptr;
    int line = 0;
    const char* function = nullptr;
};

/// The log of the process: hands every message to one sink that the host sets.
///
/// All operations can be called from any thread at any time, from within a sink too, and before and
/// after main. Several threads can be in the sink at once: a sink guards what it shares itself.
class QOR_API Logger {
public:
    using Sink = std::function<void(const LogRecord&)>;

    /// Hands the message to the sink on the calling thread; does nothing if there is no sink. What
    /// the sink throws is dropped.
    static void appendLogMsgExt(const std::string& message, int level, const char* file, int line,
                                const char* function);

    /// Whether there is a sink, so that a message that nobody gets need not be composed.
    static bool hasSink();

    /// Sets where messages go from now on; an empty sink stops the log. A thread that is logging
    /// right now may still finish its call of the former sink.
    /// \return the former sink, empty if there was none.
    static Sink setSink(Sink sink);
};

}  // namespace QOR
