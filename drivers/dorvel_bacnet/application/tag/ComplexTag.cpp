#include "ComplexTag.h"

#include <utility>

#include "Tag.h"
#include "TagHeader.h"

namespace {

// Most constructed values have no more; it spares a list its first reallocations.
constexpr std::size_t UsualSubTags = 8;

void Append(std::vector<char>& bytes, std::vector<char> const& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// The opening or the closing tag.
std::vector<char> Bracket(ComplexTag const& tag, char valLenType) {
    return Tag(tag.GetTagNumber(), true, valLenType, 0).GetBytes();
}

}  // namespace

ComplexTag::ComplexTag(char tagNumber, bool isClass) : TagBase(tagNumber, isClass, 0) {}

// The nested tags of all levels are gathered in one list, so that each is destroyed with one level below it.
ComplexTag::~ComplexTag() {
    SubTags pending;
    ReleaseNested(pending);
    while (!pending.empty()) {
        auto const tag = std::move(pending.back());
        pending.pop_back();
        static_cast<ComplexTag&>(*tag).ReleaseNested(pending);
    }
}

void ComplexTag::ReleaseNested(SubTags& pending) {
    if (!std::exchange(holdsConstructed, false)) {
        return;
    }
    for (std::unique_ptr<TagBase>& tag : subTags) {
        if (tag->IsConstructed() && static_cast<ComplexTag&>(*tag).holdsConstructed) {
            pending.push_back(std::move(tag));
        }
    }
}

std::vector<char> ComplexTag::GetBytes() const {
    // A tag whose opening tag is written, and the place of its next sub-tag.
    struct Open {
        ComplexTag const* tag;
        int next;
    };
    std::vector<char> bytes = Bracket(*this, TagHeader::OpeningTag);
    std::vector<Open> open{{this, 0}};
    while (!open.empty()) {
        Open& innermost = open.back();
        if (innermost.next == innermost.tag->size()) {
            Append(bytes, Bracket(*innermost.tag, TagHeader::ClosingTag));
            open.pop_back();
            continue;
        }
        TagBase const* const subTag = innermost.tag->GetSubTag(innermost.next++);
        if (subTag->IsConstructed()) {
            auto const& complex = static_cast<ComplexTag const&>(*subTag);
            Append(bytes, Bracket(complex, TagHeader::OpeningTag));
            open.push_back({&complex, 0});
        } else {
            Append(bytes, subTag->GetBytes());
        }
    }
    return bytes;
}

void ComplexTag::AddSubTag(std::unique_ptr<TagBase> tag) {
    if (subTags.empty()) {
        subTags.reserve(UsualSubTags);
    }
    holdsConstructed = holdsConstructed || tag->IsConstructed();
    subTags.push_back(std::move(tag));
}
