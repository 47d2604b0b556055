#include "ComplexTag.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Tag.h"
#include "TagHeader.h"

namespace {

void Append(std::vector<char>& bytes, std::vector<char> const& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// The opening or the closing tag.
std::vector<char> Bracket(ComplexTag const& tag, char valLenType) {
    return Tag(tag.GetTagNumber(), true, valLenType, 0).GetBytes();
}

}  // namespace

ComplexTag::ComplexTag(char tagNumber, bool isClass) : TagBase(tagNumber, isClass, 0) {}

// The sub-tags of all levels are gathered in one list, so that none is destroyed while it owns others.
ComplexTag::~ComplexTag() {
    auto pending = std::move(subTags);
    while (!pending.empty()) {
        auto const tag = std::move(pending.back());
        pending.pop_back();
        if (auto* const complex = dynamic_cast<ComplexTag*>(tag.get())) {
            std::move(complex->subTags.begin(), complex->subTags.end(), std::back_inserter(pending));
            complex->subTags.clear();
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
        if (auto const* const complex = dynamic_cast<ComplexTag const*>(subTag)) {
            Append(bytes, Bracket(*complex, TagHeader::OpeningTag));
            open.push_back({complex, 0});
        } else {
            Append(bytes, subTag->GetBytes());
        }
    }
    return bytes;
}

void ComplexTag::AddSubTag(std::unique_ptr<TagBase> tag) {
    subTags.push_back(std::move(tag));
}
