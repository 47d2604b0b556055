#pragma once

#include <vector>

#include "AnswerStore.h"

// The common base of primitive and constructed tags. It stores numbers unchanged, without a range check.
class TagBase : public PartOfAnswer {
public:
    TagBase() = default;
    TagBase(char tagNumber, bool isClass, char valLenType)
        : number(tagNumber), contextSpecific(isClass), lengthType(valLenType) {}
    virtual ~TagBase() = default;

    // The octets of the tag on the wire.
    virtual std::vector<char> GetBytes() const = 0;

    // True for a ComplexTag. The functions of TagKind.h cast a tag to its kind.
    bool IsConstructed() const { return constructed; }

    // An octet from 0 to 255: convert it to unsigned char before widening it.
    char GetTagNumber() const { return number; }
    void SetTagNumber(char value) { number = value; }
    // True for a context specific tag, false for an application tag.
    bool GetIsClass() const { return contextSpecific; }
    void SetIsClass(bool value) { contextSpecific = value; }
    // The length/value/type of the first octet.
    char GetValLenType() const { return lengthType; }
    void SetValLenType(char value) { lengthType = value; }

protected:
    // For ComplexTag only: the cast of a constructed tag relies on it.
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
