#include "TagStore.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <thread>
#include <vector>

#include "ComplexTag.h"
#include "Heap.h"
#include "Tag.h"

using namespace test;

namespace {

using Tags = std::vector<std::unique_ptr<TagBase>>;

std::unique_ptr<TagBase> Primitive() {
    return std::make_unique<Tag>(char{2}, false, char{0}, 0);
}

std::unique_ptr<TagBase> Constructed() {
    return std::make_unique<ComplexTag>(char{3}, true);
}

// This number of tags, in a list that reserves its memory first.
Tags Several(int count) {
    Tags tags(static_cast<std::size_t>(count));
    for (auto& tag : tags) {
        tag = Primitive();
    }
    return tags;
}

// The number of heap allocations while an action runs.
template <class Action>
long long AllocationsDuring(Action const& action) {
    long long const before = HeapTotalsSoFar().allocations;
    action();
    return HeapTotalsSoFar().allocations - before;
}

TEST(TagStore, WithoutAStoreTagsComeFromTheHeap) {
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
    EXPECT_EQ(AllocationsDuring([] { Constructed(); }), 1);
}

TEST(TagStore, GivesATagTheMemoryOfAnEarlierOne) {
    TagStore const store;
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
    EXPECT_EQ(AllocationsDuring([] { Constructed(); }), 0) << "of the other kind too";
    EXPECT_EQ(AllocationsDuring([] {
                  auto const one = Constructed();
                  auto const another = Primitive();
              }),
              1);
}

TEST(TagStore, KeepsTheKindsApart) {
    TagStore const store;
    Several(3);
    auto const first = Primitive();
    auto const second = Constructed();
    first->SetTagNumber(1);
    second->SetTagNumber(2);
    EXPECT_EQ(first->GetTagNumber(), 1);
    EXPECT_EQ(second->GetTagNumber(), 2);
    EXPECT_FALSE(first->IsConstructed());
    EXPECT_TRUE(second->IsConstructed());
}

TEST(TagStore, ReturnsAllMemoryAtItsEnd) {
    long long const before = HeapBlocks();
    {
        TagStore const store;
        Several(10);
        EXPECT_EQ(HeapBlocks(), before + 10);
    }
    EXPECT_EQ(HeapBlocks(), before);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1) << "the store has ended";
}

TEST(TagStore, KeepsNoMoreThanItsLimit) {
    long long const before = HeapBlocks();
    TagStore const store;
    Several(TagStore::MostBlocks + 100);
    EXPECT_EQ(HeapBlocks(), before + TagStore::MostBlocks);
    EXPECT_EQ(AllocationsDuring([] { Several(TagStore::MostBlocks + 1); }), 2)
        << "the list, and the last tag";
}

TEST(TagStore, AcceptsOlderTagsAndTagsThatOutliveIt) {
    long long const before = HeapBlocks();
    auto older = Primitive();
    std::unique_ptr<TagBase> younger;
    {
        TagStore const store;
        older.reset();
        EXPECT_EQ(AllocationsDuring([&younger] { younger = Constructed(); }), 0);
    }
    EXPECT_EQ(HeapBlocks(), before + 1);
    younger.reset();
    EXPECT_EQ(HeapBlocks(), before);
}

TEST(TagStore, IsReplacedByANewerStoreUntilThatEnds) {
    TagStore const outer;
    Primitive();
    {
        TagStore const inner;
        EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
        EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
    }
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
}

TEST(TagStore, ServesOnlyItsThread) {
    TagStore const store;
    Primitive();
    long long elsewhere = 0;
    std::thread([&elsewhere] { elsewhere = AllocationsDuring([] { Primitive(); }); }).join();
    EXPECT_EQ(elsewhere, 1);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
}

// A tag larger than the current ones bypasses the store.
TEST(TagStore, LeavesLargerTagsToTheHeap) {
    class LargeTag : public Tag {
    public:
        char more[TagStore::BlockSize] = {};
    };
    TagStore const store;
    long long const before = HeapBlocks();
    std::make_unique<LargeTag>().reset();
    EXPECT_EQ(HeapBlocks(), before);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1) << "the store got no memory";
}

TEST(TagStore, ThrowsBadAllocWhenThereIsNoMemory) {
    TagStore const store;
    FailAllocation(1);
    EXPECT_THROW(Primitive(), std::bad_alloc);
    EXPECT_TRUE(HasFailedAllocation());
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1) << "the store still works";
}

#if defined(__SANITIZE_ADDRESS__)
TEST(TagStoreDeathTest, DoesNotHideATagThatIsUsedAfterItsEnd) {
    TagStore const store;
    TagBase* volatile gone = nullptr;
    {
        auto const tag = Primitive();
        gone = tag.get();
    }
    EXPECT_DEATH(gone->SetTagNumber(1), "use-after-poison");
}
#endif

}  // namespace
