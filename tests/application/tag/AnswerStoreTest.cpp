#include "AnswerStore.h"

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

std::unique_ptr<TagBase> WithOctets(std::size_t count) {
    auto tag = std::make_unique<Tag>();
    tag->data = AnswerStore::TakeOctets();
    tag->data.resize(count);
    return tag;
}

std::unique_ptr<TagBase> WithSubTags(int count) {
    auto tag = std::make_unique<ComplexTag>();
    for (int index = 0; index < count; ++index) {
        tag->AddSubTag(Primitive());
    }
    return tag;
}

// This number of tags, in a list that reserves its memory first.
Tags Several(std::size_t count) {
    Tags tags(count);
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

TEST(AnswerStore, WithoutAStoreTagsComeFromTheHeap) {
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
    EXPECT_EQ(AllocationsDuring([] { Constructed(); }), 1);
}

TEST(AnswerStore, GivesATagTheMemoryOfAnEarlierOne) {
    AnswerStore const store;
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
    EXPECT_EQ(AllocationsDuring([] { Constructed(); }), 0) << "of the other kind too";
    EXPECT_EQ(AllocationsDuring([] {
                  auto const one = Constructed();
                  auto const another = Primitive();
              }),
              1);
}

TEST(AnswerStore, KeepsTheKindsApart) {
    AnswerStore const store;
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

TEST(AnswerStore, GivesATagTheCapacityOfEarlierOctets) {
    AnswerStore const store;
    EXPECT_EQ(AllocationsDuring([] { WithOctets(20); }), 2) << "the tag and its octets";
    EXPECT_EQ(AllocationsDuring([] { WithOctets(20); }), 0);
    EXPECT_EQ(AllocationsDuring([] { WithOctets(3); }), 0);
    std::vector<char> const octets = AnswerStore::TakeOctets();
    EXPECT_TRUE(octets.empty());
    EXPECT_GE(octets.capacity(), 20U);
}

TEST(AnswerStore, GivesAListOfSubTagsTheMemoryOfATag) {
    AnswerStore const store;
    EXPECT_EQ(AllocationsDuring([] { WithSubTags(8); }), 10) << "nine tags and a list";
    EXPECT_EQ(AllocationsDuring([] { WithSubTags(8); }), 0);
    EXPECT_EQ(static_cast<ComplexTag&>(*WithSubTags(1)).size(), 1);
}

TEST(AnswerStore, KeepsNoLongVector) {
    AnswerStore const store;
    Primitive();
    EXPECT_EQ(AllocationsDuring([] { WithOctets(AnswerStore::MostOctets + 1); }), 1);
    EXPECT_EQ(AnswerStore::TakeOctets().capacity(), 0U);
}

TEST(AnswerStore, KeepsNoMoreVectorsThanItsLimit) {
    AnswerStore const store;
    for (std::size_t index = 0; index <= AnswerStore::MostBlocks; ++index) {
        AnswerStore::LeaveOctets(std::vector<char>(20));
    }
    std::size_t kept = 0;
    while (AnswerStore::TakeOctets().capacity() != 0) {
        ++kept;
    }
    EXPECT_EQ(kept, AnswerStore::MostBlocks);
}

TEST(AnswerStore, ReturnsAllMemoryAtItsEnd) {
    long long const before = HeapBlocks();
    {
        AnswerStore const store;
        Several(10);
        EXPECT_EQ(HeapBlocks(), before + 10);
    }
    EXPECT_EQ(HeapBlocks(), before);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1) << "the store has ended";
}

TEST(AnswerStore, KeepsNoMoreThanItsLimit) {
    long long const before = HeapBlocks();
    AnswerStore const store;
    Several(AnswerStore::MostBlocks + 100);
    EXPECT_EQ(HeapBlocks(), before + AnswerStore::MostBlocks);
    EXPECT_EQ(AllocationsDuring([] { Several(AnswerStore::MostBlocks + 1); }), 2)
        << "the list, and the last tag";
}

TEST(AnswerStore, AcceptsOlderTagsAndTagsThatOutliveIt) {
    long long const before = HeapBlocks();
    auto older = Primitive();
    std::unique_ptr<TagBase> younger;
    {
        AnswerStore const store;
        older.reset();
        EXPECT_EQ(AllocationsDuring([&younger] { younger = Constructed(); }), 0);
    }
    EXPECT_EQ(HeapBlocks(), before + 1);
    younger.reset();
    EXPECT_EQ(HeapBlocks(), before);
}

TEST(AnswerStore, IsReplacedByANewerStoreUntilThatEnds) {
    AnswerStore const outer;
    Primitive();
    {
        AnswerStore const inner;
        EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1);
        EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
    }
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
}

TEST(AnswerStore, ServesOnlyItsThread) {
    AnswerStore const store;
    Primitive();
    long long elsewhere = 0;
    std::thread([&elsewhere] { elsewhere = AllocationsDuring([] { Primitive(); }); }).join();
    EXPECT_EQ(elsewhere, 1);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 0);
}

// A tag larger than the current ones bypasses the store.
TEST(AnswerStore, LeavesLargerTagsToTheHeap) {
    class LargeTag : public Tag {
    public:
        char more[AnswerStore::BlockSize] = {};
    };
    AnswerStore const store;
    long long const before = HeapBlocks();
    std::make_unique<LargeTag>().reset();
    EXPECT_EQ(HeapBlocks(), before);
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1) << "the store got no memory";
}

TEST(AnswerStore, ThrowsBadAllocWhenThereIsNoMemory) {
    AnswerStore const store;
    FailAllocation(1);
    EXPECT_THROW(Primitive(), std::bad_alloc);
    EXPECT_TRUE(HasFailedAllocation());
    EXPECT_EQ(AllocationsDuring([] { Primitive(); }), 1) << "the store still works";
}

#if defined(__SANITIZE_ADDRESS__)
TEST(AnswerStoreDeathTest, DoesNotHideATagThatIsUsedAfterItsEnd) {
    AnswerStore const store;
    TagBase* volatile gone = nullptr;
    {
        auto const tag = Primitive();
        gone = tag.get();
    }
    EXPECT_DEATH(gone->SetTagNumber(1), "use-after-poison");
}
#endif

}  // namespace
