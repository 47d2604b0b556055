#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "TagBase.h"

// A constructed value: an opening tag, the sub-tags in wire order, a closing tag. It owns its sub-tags.
// Devices may nest such values without limit, so neither writing nor destroying one uses the call stack for
// its depth; destroying one needs no memory either.
class ComplexTag final : public TagBase {
public:
    ComplexTag() : ComplexTag(0, false) {}
    ComplexTag(char tagNumber, bool isClass);
    ~ComplexTag() override;

    // Opening and closing tags are of context class, whatever the class flag says.
    std::vector<char> GetBytes() const override;

    // Appends a tag, which must not be null, and takes ownership.
    void AddSubTag(std::unique_ptr<TagBase> tag);
    // The tag at a place from 0 to size() - 1, which is not checked. It stays owned by this tag.
    TagBase* GetSubTag(int index) const { return subTags[static_cast<std::size_t>(index)].get(); }
    int size() const { return static_cast<int>(subTags.size()); }

private:
    using SubTags = std::vector<std::unique_ptr<TagBase>>;

    // Takes the last sub-tag of a tag that has one.
    static std::unique_ptr<TagBase> TakeLast(ComplexTag& tag);
    // The tag as a constructed one if it holds such tags itself, or held them; otherwise null.
    static ComplexTag* AsNested(TagBase& tag);
    // Destroys a tag with all that it holds, in time proportional to it.
    static void Dismantle(std::unique_ptr<TagBase> whole);

    SubTags subTags;
    bool holdsConstructed = false;
};
