#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class TagBase;

// Memory for the parts of an answer: its tags, their octets and sub-tags, the values that are read from them.
// While a store lives, memory that its thread frees is kept and serves the next answer, instead of going back
// to the heap. The answer for an object with three properties has 14 tags and four values that live for one
// transaction, and the next answer needs as many again. TBACnet::Read has one store per poll:
//
//                               waiting in the store
//   first answer is parsed      -                       Take asks the heap, once per tag
//   its tree is destroyed       tag -> tag -> tag       Leave keeps each one
//   second answer is parsed     -                       Take returns them, the last one first
//   its tree is destroyed       tag -> tag -> tag
//   the poll ends               -                       the destructor frees them
//
// A waiting block holds the pointer to the next one, so that list needs no memory of its own. Vectors wait
// with their capacity.
//
// Every block is an allocation of its own on the heap, whether or not a store lives. So a tag may be older
// than the store that receives its memory, and may outlive the store that its memory came from. Stores may
// nest: the youngest one of the thread serves, and they end in the reverse order of their beginning. Threads
// share nothing.
class AnswerStore {
public:
    using SubTags = std::vector<std::unique_ptr<TagBase>>;

    // Without memory for the list of waiting vectors, none will wait.
    AnswerStore();
    ~AnswerStore();
    AnswerStore(AnswerStore const&) = delete;
    AnswerStore& operator=(AnswerStore const&) = delete;

    // Implement operator new and delete of a tag or a value. Take throws std::bad_alloc as the heap does.
    static void* Take(std::size_t size);
    static void Leave(void* block, std::size_t size) noexcept;

    // An empty vector, with the capacity of an earlier one if one waits.
    static std::vector<char> TakeOctets();
    static SubTags TakeSubTags();
    // Keeps the capacity of a vector whose elements are no longer needed.
    static void Leave(std::vector<char>&& octets) noexcept;
    static void Leave(SubTags&& subTags) noexcept;

    // The size in octets of the blocks that are kept: that of the largest value, a text. And the greatest
    // number of blocks, and of vectors of each kind: enough for 80 properties with a value each. The limits
    // keep an answer of many thousand tags from holding its memory until the end of the poll.
    static constexpr std::size_t BlockSize = sizeof(std::string) + 2 * sizeof(void*);
    static constexpr int MostBlocks = 256;
    // The greatest capacity of a vector that is kept, in octets.
    static constexpr std::size_t LongestVector = 64;

private:
    // A waiting block.
    struct Waiting {
        Waiting* next;
    };

    void* Pop();
    void Push(void* block);

    static thread_local AnswerStore* current;

    AnswerStore* const outer;
    Waiting* first = nullptr;
    int count = 0;
    std::vector<std::vector<char>> waitingOctets;
    std::vector<SubTags> waitingSubTags;
};
