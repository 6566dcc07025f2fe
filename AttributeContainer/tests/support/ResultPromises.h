// Both promises of a change, with what comes of them.
#pragma once

#include <AttributeContainer/Attribute.h>

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <vector>

namespace QOR::AttributeContainer::Testing {

using Results = std::vector<Observable::NotificationResult>;

/// The promises for the two halves of a change, and their futures.
struct ResultPromises {
    ResultPromise pre = std::make_unique<ResultPromise::element_type>();
    ResultPromise post = std::make_unique<ResultPromise::element_type>();
    std::future<Results> preAnswers = pre->get_future();
    std::future<Results> postAnswers = post->get_future();

    void expectConsumed() const {
        EXPECT_EQ(pre, nullptr);
        EXPECT_EQ(post, nullptr);
    }
};

/// The half that should answer has never run.
inline void expectBroken(std::future<Results>& answers) {
    try {
        answers.get();
        ADD_FAILURE() << "the promise was kept";
    } catch (const std::future_error& error) {
        EXPECT_EQ(error.code(), std::future_errc::broken_promise);
    }
}

}  // namespace QOR::AttributeContainer::Testing
