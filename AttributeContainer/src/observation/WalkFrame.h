// Tells a running operation that the object it runs on has gone meanwhile.
#pragma once

#include <AttributeContainer/ThreadWord.h>

namespace QOR::AttributeContainer {

class Observable;

/// A place on the call stack where an observable calls foreign code. Whoever destroys the
/// observable in there leaves word, and the operation touches it no more.
class WalkFrame {
public:
    explicit WalkFrame(const Observable& observable) : observable(&observable), outer(innermost) {
        innermost = this;
    }
    WalkFrame(const WalkFrame&) = delete;
    WalkFrame& operator=(const WalkFrame&) = delete;
    ~WalkFrame() { innermost = outer; }

    /// Whether the observable was destroyed since the frame began.
    const bool& isGone() const { return gone; }

    /// Called when `observable` is destroyed; costs nothing while no frame is open.
    static void leaveWord(const Observable& observable);

private:
    QOR_THREAD_WORD static inline WalkFrame* innermost = nullptr;

    const Observable* observable;
    bool gone = false;
    WalkFrame* outer;
};

}  // namespace QOR::AttributeContainer
