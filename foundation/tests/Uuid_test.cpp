#include <QOR/Uuid.h>

#include <gtest/gtest.h>

#include <mutex>
#include <set>
#include <thread>
#include <type_traits>
#include <vector>

#if defined(__unix__)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

using QOR::uuids::uuid;

const uuid counting(uuid::Bytes{0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,  //
                                0x88, 0x99, 0xaa, 0xbb, 0xcc, 0xdd, 0xee, 0xff});
const std::string countingText = "00112233-4455-6677-8899-aabbccddeeff";

TEST(Uuid, IsAPlainValueOfSixteenBytes) {
    EXPECT_EQ(sizeof(uuid), 16u);
    EXPECT_TRUE(std::is_trivially_copyable_v<uuid>);
}

TEST(Uuid, IsNilAtFirst) {
    EXPECT_TRUE(uuid().is_nil());
    EXPECT_EQ(uuid().bytes(), uuid::Bytes{});
    EXPECT_EQ(uuid().toString(), "00000000-0000-0000-0000-000000000000");
}

TEST(Uuid, IsNotNilWithOneByteSet) {
    uuid::Bytes bytes{};
    bytes[15] = 1;

    EXPECT_FALSE(uuid(bytes).is_nil());
}

TEST(Uuid, WritesLowerCaseDigitsInGroupsOfEightFourFourFourAndTwelve) {
    EXPECT_EQ(counting.toString(), countingText);
}

TEST(Uuid, ReadsWhatItWrites) {
    EXPECT_EQ(uuid::parse(countingText), counting);
    EXPECT_EQ(uuid::parse(uuid().toString()), uuid());
    const auto fresh = uuid::generate();
    EXPECT_EQ(uuid::parse(fresh.toString()), fresh);
}

TEST(Uuid, ReadsEitherCaseBracesAndHyphensAnywhere) {
    EXPECT_EQ(uuid::parse("00112233-4455-6677-8899-AABBCCDDEEFF"), counting);
    EXPECT_EQ(uuid::parse("00112233-4455-6677-8899-AaBbCcDdEeFf"), counting);
    EXPECT_EQ(uuid::parse("{00112233-4455-6677-8899-aabbccddeeff}"), counting);
    EXPECT_EQ(uuid::parse("00112233445566778899aabbccddeeff"), counting);
    EXPECT_EQ(uuid::parse("{00112233445566778899aabbccddeeff}"), counting);
    EXPECT_EQ(uuid::parse("-0-0112233445566778899aabbccddeeff--"), counting);
}

TEST(Uuid, RefusesTextThatIsNone) {
    const char* const refused[] = {
        "",
        "-",
        "{",
        "}",
        "{}",
        "00112233-4455-6677-8899-aabbccddeef",     // an odd number of digits
        "00112233-4455-6677-8899-aabbccddee",      // a byte short
        "00112233-4455-6677-8899-aabbccddeeff0",   // a digit over
        "00112233-4455-6677-8899-aabbccddeeff00",  // a byte over
        "{00112233-4455-6677-8899-aabbccddeeff",
        "00112233-4455-6677-8899-aabbccddeeff}",
        "{{00112233-4455-6677-8899-aabbccddeeff}}",
        "(00112233-4455-6677-8899-aabbccddeeff)",
        "00112233-4455-6677-8899-aabbccddeefg",
        " 00112233-4455-6677-8899-aabbccddeeff",
        "00112233-4455-6677-8899-aabbccddeeff ",
    };
    for (const auto* text : refused) EXPECT_FALSE(uuid::parse(text).has_value()) << text;
    EXPECT_FALSE(uuid::parse(countingText + std::string(1, '\0')).has_value());
}

TEST(Uuid, OrdersByTheBytesFromTheFirst) {
    uuid::Bytes small{};
    small[15] = 0xff;
    uuid::Bytes large{};
    large[0] = 0x80;

    EXPECT_LT(uuid(small), uuid(large));
    EXPECT_FALSE(uuid(large) < uuid(small));
    EXPECT_FALSE(uuid(small) < uuid(small));
    EXPECT_EQ(uuid(small), uuid(small));
    EXPECT_NE(uuid(small), uuid(large));
    EXPECT_EQ((std::set<uuid>{uuid(small), uuid(large), uuid(small)}).size(), 2u);
}

TEST(Uuid, GeneratesRandomIdentifiersOfVersionFour) {
    std::set<uuid> made;
    for (int i = 0; i < 10'000; ++i) {
        const auto fresh = uuid::generate();
        EXPECT_FALSE(fresh.is_nil());
        EXPECT_EQ(fresh.bytes()[6] >> 4, 4);
        EXPECT_EQ(fresh.bytes()[8] >> 6, 2);
        made.insert(fresh);
    }
    EXPECT_EQ(made.size(), 10'000u);
}

TEST(Uuid, GeneratesDifferentIdentifiersOnDifferentThreads) {
    std::mutex mutex;
    std::set<uuid> made;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int j = 0; j < 1000; ++j) {
                const auto fresh = uuid::generate();
                const std::lock_guard lock(mutex);
                made.insert(fresh);
            }
        });
    for (auto& thread : threads) thread.join();

    EXPECT_EQ(made.size(), 4000u);
}

#if defined(__unix__)
TEST(Uuid, AForkedProcessDoesNotRepeatTheIdentifiersOfItsParent) {
    uuid::generate();  // the generator of this thread is there before the fork
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);

    const auto child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto bytes = uuid::generate().bytes();
        const auto written = write(ends[1], bytes.data(), bytes.size());
        _exit(written == static_cast<ssize_t>(bytes.size()) ? 0 : 1);
    }
    const auto ofParent = uuid::generate();
    uuid::Bytes ofChild{};
    const auto numRead = read(ends[0], ofChild.data(), ofChild.size());
    int status = 0;
    waitpid(child, &status, 0);
    close(ends[0]);
    close(ends[1]);

    EXPECT_EQ(status, 0);
    ASSERT_EQ(numRead, static_cast<ssize_t>(ofChild.size()));
    EXPECT_FALSE(uuid(ofChild).is_nil());
    EXPECT_NE(uuid(ofChild), ofParent);
}
#endif

}  // namespace
