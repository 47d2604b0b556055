#include "ComplexTag.h"

#include <utility>

#include "Octets.h"
#include "Tag.h"
#include "TagHeader.h"
#include "TagKind.h"

namespace {

static_assert(sizeof(ComplexTag) <= AnswerStore::BlockSize, "a store has no room for it");

// As many as a block holds. Most constructed values have no more sub-tags.
constexpr std::size_t UsualSubTags = AnswerStore::BlockSize / sizeof(void*);

// The opening or the closing tag.
std::vector<char> Bracket(ComplexTag const& tag, char valLenType) {
    return Tag(tag.GetTagNumber(), true, valLenType, 0).GetBytes();
}

}  // namespace

ComplexTag::ComplexTag(char tagNumber, bool isClass) : TagBase(Constructed(), tagNumber, isClass) {}

ComplexTag::~ComplexTag() {
    if (holdsConstructed) {
        for (std::unique_ptr<TagBase>& tag : subTags) {
            if (AsNested(*tag)) {
                Dismantle(std::move(tag));
            }
        }
    }
}

// Keeps the way back inside the tree itself. On the way down, a parent that has sub-tags left becomes the
// first sub-tag of the one just taken from it, in the slot that this one's own last sub-tag leaves. Being
// first, it comes up again when all others are gone. Here d has primitive sub-tags; a and c are primitive:
//
//     A             B           B         A
//    / \           / \          |         |
//   a   B    ->   A   c   ->    A   ->    a   ->  nothing
//      / \        |             |
//     c   d       a             a
//
//   freed:         d            c         B         a, A
//
// A plain list of the tags still to free is as fast. But it may need memory, and a destructor must not throw
// std::bad_alloc.
void ComplexTag::Dismantle(std::unique_ptr<TagBase> whole) {
    while (ComplexTag* const holder = AsNested(*whole)) {
        std::unique_ptr<TagBase> tag = TakeLast(*holder);
        ComplexTag* inner = AsNested(*tag);
        while (inner && AsNested(*whole)) {
            std::unique_ptr<TagBase> last = TakeLast(*inner);
            inner->subTags.push_back(std::move(whole));
            std::swap(inner->subTags.front(), inner->subTags.back());
            whole = std::exchange(tag, std::move(last));
            inner = AsNested(*tag);
        }
        if (inner) {
            whole = std::move(tag);
        }
    }
}

ComplexTag* ComplexTag::AsNested(TagBase& tag) {
    ComplexTag* const complex = AsComplex(&tag);
    return complex && complex->holdsConstructed && !complex->subTags.empty() ? complex : nullptr;
}

std::unique_ptr<TagBase> ComplexTag::TakeLast(ComplexTag& tag) {
    std::unique_ptr<TagBase> last = std::move(tag.subTags.back());
    tag.subTags.pop_back();
    return last;
}

std::vector<char> ComplexTag::GetBytes() const {
    // A tag whose opening tag is written, and the index of its next sub-tag.
    struct Open {
        ComplexTag const* tag;
        int next;
    };
    std::vector<char> bytes = Bracket(*this, TagHeader::OpeningTag);
    std::vector<Open> open{{this, 0}};
    while (!open.empty()) {
        Open& innermost = open.back();
        if (innermost.next == innermost.tag->size()) {
            AppendOctets(bytes, Bracket(*innermost.tag, TagHeader::ClosingTag));
            open.pop_back();
            continue;
        }
        TagBase* const subTag = innermost.tag->GetSubTag(innermost.next++);
        if (ComplexTag const* const complex = AsComplex(subTag)) {
            AppendOctets(bytes, Bracket(*complex, TagHeader::OpeningTag));
            open.push_back({complex, 0});
        } else {
            AppendOctets(bytes, subTag->GetBytes());
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
