#pragma once

#include <vector>

#include "TagStore.h"

// What primitive and constructed tags have in common. Numbers are stored as given, without a range check.
class TagBase {
public:
    TagBase() = default;
    TagBase(char tagNumber, bool isClass, char valLenType)
        : number(tagNumber), contextSpecific(isClass), lengthType(valLenType) {}
    virtual ~TagBase() = default;

    // Tags come and go by the dozen with each answer.
    static void* operator new(std::size_t size) { return TagStore::Take(size); }
    static void operator delete(void* piece, std::size_t size) { TagStore::Leave(piece, size); }

    // The tag as it goes on the wire.
    virtual std::vector<char> GetBytes() const = 0;

    // True for a ComplexTag. TagKind.h turns a tag into one of its kind.
    bool IsConstructed() const { return constructed; }

    // An octet, 0 to 255: to be widened as unsigned.
    char GetTagNumber() const { return number; }
    void SetTagNumber(char value) { number = value; }
    // True for a context specific tag, false for an application tag.
    bool GetIsClass() const { return contextSpecific; }
    void SetIsClass(bool value) { contextSpecific = value; }
    // The length/value/type of the first octet.
    char GetValLenType() const { return lengthType; }
    void SetValLenType(char value) { lengthType = value; }

protected:
    // For ComplexTag alone, which is what a constructed tag is cast to.
    struct Constructed {};
    TagBase(Constructed, char tagNumber, bool isClass)
        : number(tagNumber), contextSpecific(isClass), constructed(true) {}

    TagBase(TagBase const&) = default;
    TagBase& operator=(TagBase const&) = default;

private:
    char number = 0;
    bool contextSpecific = false;
    char lengthType = 0;
    bool constructed = false;
};
