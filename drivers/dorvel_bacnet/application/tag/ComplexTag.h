#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "TagBase.h"

// A constructed value: an opening tag, the sub-tags in wire order, a closing tag (ASHRAE 135 clause
// 20.2.1.3.2). It owns its sub-tags. A device may nest such values to any depth, so neither GetBytes nor the
// destructor recurses; the destructor allocates no memory either.
class ComplexTag final : public TagBase {
public:
    ComplexTag() : ComplexTag(0, false) {}
    ComplexTag(char tagNumber, bool isClass);
    ~ComplexTag() override;

    // Opening and closing tag have context class, whatever the class flag is.
    std::vector<char> GetBytes() const override;

    // Appends a tag, which must not be null, and takes ownership.
    void AddSubTag(std::unique_ptr<TagBase> tag);
    // The tag at an index from 0 to size() - 1. The index is not checked. This tag keeps the ownership.
    TagBase* GetSubTag(int index) const { return subTags[static_cast<std::size_t>(index)].get(); }
    int size() const { return static_cast<int>(subTags.size()); }

private:
    // Removes the last sub-tag of a tag that has one and returns it.
    static std::unique_ptr<TagBase> TakeLast(ComplexTag& tag);
    // The tag as a ComplexTag if it has sub-tags and holds or held constructed ones; otherwise null.
    static ComplexTag* AsNested(TagBase& tag);
    // Destroys a tag and everything below it in linear time, without recursion and without an allocation.
    static void Dismantle(std::unique_ptr<TagBase> whole);

    std::vector<std::unique_ptr<TagBase>, AnswerAllocator<std::unique_ptr<TagBase>>> subTags;
    bool holdsConstructed = false;
};
