#include "observation/WalkFrame.h"

#include "observation/ThreadWord.h"

namespace QOR::AttributeContainer {

namespace {
QOR_THREAD_WORD WalkFrame* innermost = nullptr;
}  // namespace

WalkFrame::WalkFrame(const Observable& observable) : observable(&observable), outer(innermost) {
    innermost = this;
}

WalkFrame::~WalkFrame() { innermost = outer; }

void WalkFrame::leaveWord(const Observable& observable) {
    for (WalkFrame* frame = innermost; frame; frame = frame->outer)
        if (frame->observable == &observable) frame->gone = true;
}

}  // namespace QOR::AttributeContainer
