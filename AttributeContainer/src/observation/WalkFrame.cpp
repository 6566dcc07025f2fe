#include "observation/WalkFrame.h"

namespace QOR::AttributeContainer {

void WalkFrame::leaveWord(const Observable& observable) {
    for (WalkFrame* frame = innermost; frame; frame = frame->outer)
        if (frame->observable == &observable) frame->gone = true;
}

}  // namespace QOR::AttributeContainer
