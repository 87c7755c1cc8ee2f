#include <gtest/gtest.h>
#include <malloc.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>

#include "bbtree.h"

using namespace bbtree;

// Memory in use, for the test that looks at the size of a tree.
static std::atomic<std::size_t> usedBytes{0};

[[gnu::noinline]] void *operator new(std::size_t size)
{
    void *memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    usedBytes += malloc_usable_size(memory);
    return memory;
}

[[gnu::noinline]] void operator delete(void *memory) noexcept
{
    usedBytes -= malloc_usable_size(memory);
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void *memory, std::size_t) noexcept
{
    operator delete(memory);
}

namespace {

/// Counts bytes and keeps none.
class CountingBuffer : public std::streambuf
{
public:
    std::size_t count = 0;

protected:
    int_type overflow(int_type byte) override
    {
        ++count;
        return byte;
    }
    std::streamsize xsputn(const char *, std::streamsize size) override
    {
        count += static_cast<std::size_t>(size);
        return size;
    }
};

std::string repeated(const std::string &unit, std::size_t bytes)
{
    std::string text;
    while (text.size() < bytes)
        text += unit;
    return text;
}

std::size_t countNodes(const bbcpp::BBNode &root)
{
    std::size_t count = 0;
    bbcpp::walk(root, [&count](const bbcpp::BBNodePtr &, unsigned int) { ++count; });
    return count;
}

std::size_t depthOf(const bbcpp::BBNode &root)
{
    std::size_t deepest = 0;
    bbcpp::walk(root, [&deepest](const bbcpp::BBNodePtr &, unsigned int depth) {
        deepest = std::max<std::size_t>(deepest, depth + 1);
    });
    return deepest;
}

/// Runs a step on a thread with a stack of 256 KiB, far below what a call per level would take.
void runOnSmallStack(std::function<void()> step)
{
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
    pthread_t thread;
    const auto entry = [](void *argument) -> void * {
        (*static_cast<std::function<void()> *>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, entry, &step), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

struct HostileCase
{
    const char *unit;
    std::size_t nodesPerUnit;   // in a long run of units
    std::size_t levelsPerUnit;  // in a long run of units
};

}  // namespace

TEST(HostileText, megabyteOfOneFormIsReadWalkedAndDestroyed)
{
    const HostileCase cases[] = {
        {"[b]", 1, 1},     {"[b]x", 2, 1},        {"[a=b]", 2, 2},   {"[t a=b]", 2, 2},
        {"[a=b /", 3, 2},  {"[/b]", 1, 0},        {"[b][/b]", 2, 0}, {"[hr /]", 2, 0},
        {"[a=b ", 0, 0},   {"[t ", 0, 0},         {"[", 0, 0},       {"[/", 0, 0},
        {"[x", 0, 0},      {"[a=", 0, 0},         {"[a=b", 0, 0},    {"[t a=b  ", 0, 0},
        {"]", 0, 0},       {" ", 0, 0},           {"[/x=", 0, 0},    {"[t a=b c=d e=f ", 0, 0},
        {"[a=b /]", 3, 1}, {"[t \n\n\n\n ", 0, 0}};
    for (const HostileCase &row : cases) {
        SCOPED_TRACE(row.unit);
        runOnSmallStack([&row] {
            const std::size_t units = (1024 * 1024) / std::string(row.unit).size();
            const std::string text =
                repeated(row.unit, units * std::string(row.unit).size()) + "\"";
            const std::size_t before = usedBytes;
            DocumentPtr document = parsed(text);
            const std::size_t taken = usedBytes - before;
            const std::size_t nodes = countNodes(*document);
            EXPECT_GE(nodes, units * row.nodesPerUnit);
            EXPECT_LE(nodes, units * row.nodesPerUnit + 4);
            EXPECT_GE(depthOf(*document), units * row.levelsPerUnit);
            EXPECT_LE(depthOf(*document), units * row.levelsPerUnit + 4);
            EXPECT_LE(taken, nodes * 400 + text.size() * 3);
            EXPECT_LE(bbcpp::getRawString(*document).size(), text.size());
            document.reset();
            EXPECT_EQ(usedBytes, before);
        });
    }
}

TEST(HostileText, nameToTheEndIsReadOnce)
{
    const std::string text = "[" + std::string(4 * 1024 * 1024, 'x');
    EXPECT_EQ(bbcpp::getRawString(*parsed(text)), text);
    const std::string closing = "[/" + std::string(4 * 1024 * 1024, 'x');
    EXPECT_EQ(bbcpp::getRawString(*parsed(closing)), "[" + closing.substr(2));
}

TEST(HostileText, tagWithManyPairsKeepsThemAll)
{
    runOnSmallStack([] {
        std::string text = "[t";
        for (int i = 0; i < 100000; ++i)
            text += " k" + std::to_string(i) + "=" + std::to_string(i);
        const DocumentPtr document = parsed(text + "]");
        const auto pairs = bbcpp::downcast<bbcpp::BBElement>(
            document->getChildren().front()->getChildren().front());
        EXPECT_EQ(pairs->getParameters().size(), 100000u);
        EXPECT_EQ(pairs->getParameter("k99999"), "99999");
        EXPECT_GT(printed(*document).size(), text.size());

        EXPECT_EQ(bbcpp::getRawString(*parsed(text + " !]")), text + " !]");
    });
}

TEST(HostileText, deepTreeIsPrinted)
{
    runOnSmallStack([] {
        constexpr std::size_t depth = 20000;
        const DocumentPtr document = parsed(repeated("[b]", depth * 3));
        CountingBuffer buffer;
        {
            const OutputCapture capture(&buffer);
            bbcpp::printDocument(*document);
        }
        // Line n, from 0, is n times "|   ", then "|-- [b]" and the line end.
        EXPECT_EQ(buffer.count, 10 + 4 * (depth * (depth - 1) / 2) + 8 * depth);
    });
}

TEST(HostileText, deepChainThatIsHeldElsewhereStaysWhole)
{
    runOnSmallStack([] {
        bbcpp::BBNodePtr middle;
        {
            const DocumentPtr document = parsed(repeated("[b]", 300000));
            middle = document;
            for (int level = 0; level < 50000; ++level)
                middle = middle->getChildren().front();
        }
        EXPECT_EQ(middle->getParent(), nullptr);
        EXPECT_EQ(countNodes(*middle), 50000u);
        middle.reset();
    });
}
