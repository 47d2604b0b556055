#pragma once

// The first octet of a tag (ASHRAE 135 clause 20.2.1): bits 7 to 4 the tag number, bit 3 the class, bits 2
// to 0 the length/value/type.
class TagHeader {
public:
    TagHeader() = default;
    explicit TagHeader(char headerOctet) : octet(headerOctet) {}

    // 0 to 15. 15 means that the number is in the next octet.
    char GetTagNumber() const { return static_cast<char>(static_cast<unsigned char>(octet) >> 4); }
    // True for a context specific tag, false for an application tag.
    bool GetIsClass() const { return (octet & ClassBit) != 0; }
    // 0 to 7: the length of the data, or one of the three values below.
    char GetValueLengthType() const { return static_cast<char>(octet & LengthBits); }
    // Neither checks the class.
    bool GetIsComplexOpenTag() const { return GetValueLengthType() == OpeningTag; }
    bool GetIsComplexCloseTag() const { return GetValueLengthType() == ClosingTag; }

    void SetIsClass(bool isClass);
    // Numbers above 15 become 15.
    void SetTagNumber(char tagNumber);
    // Combines the value, or 5 for a value above 7, by OR with the present one. Tag number and class are
    // lost.
    void SetValueLengthType(char valueLengthType);

    // Length/value/types that are not a length.
    static constexpr char ExtendedLength = 5;
    static constexpr char OpeningTag = 6;
    static constexpr char ClosingTag = 7;

private:
    static constexpr unsigned ClassBit = 0x08;
    static constexpr unsigned LengthBits = 0x07;

    char octet = 0;
};
