#include "containers/Teardown.h"

#include <AttributeContainer/ThreadWord.h>

#include <deque>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
// What waits for its turn, on the stack of the outermost release; null while none runs.
QOR_THREAD_WORD std::deque<std::shared_ptr<void>>* waiting = nullptr;
}  // namespace

void releaseInTurn(std::shared_ptr<void> element) {
    if (!element) return;
    if (waiting) {
        waiting->push_back(std::move(element));
        return;
    }
    std::deque<std::shared_ptr<void>> turn;
    waiting = &turn;
    element.reset();
    while (!turn.empty()) {
        const auto next = std::move(turn.front());
        turn.pop_front();
    }
    waiting = nullptr;
}

}  // namespace QOR::AttributeContainer
