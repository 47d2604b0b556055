#pragma once

#include <string>

#include "HostApi.h"
#include "opcua/OpcUa_BuiltInType.h"

// Status codes as in OPC 10000-4, 7.39: 32 bits, the top two bits 00 good, 01 uncertain, 10 bad.
using OpcUa_StatusCode = unsigned int;

constexpr OpcUa_StatusCode OpcUa_Good = 0;
constexpr OpcUa_StatusCode OpcUa_Bad = 0x80000000u;
constexpr OpcUa_StatusCode OpcUa_BadOutOfRange = 0x803C0000u;
constexpr OpcUa_StatusCode OpcUa_BadTypeMismatch = 0x80740000u;
constexpr OpcUa_StatusCode OpcUa_BadNoData = 0x809B0000u;

// A point in time as two halves of a file time: 100-nanosecond units since 1 January 1601, UTC.
struct _OpcUa_DateTime {
    unsigned int dwLowDateTime;
    unsigned int dwHighDateTime;
};

struct OpcUa_DataValue;

// Octets on the heap, always followed by a zero that Length does not count.
struct OpcUa_Octets {
    char* Data;
    int Length;
};

// A value of one built-in type. A plain record, so that other plain records can hold it:
// OpcUa_Variant_Initialize makes it null, OpcUa_Variant_Clear frees what it owns and makes it null. Which
// member of Value is in use follows from Datatype; times are file times.
struct OpcUa_Variant {
    unsigned char Datatype;
    union {
        bool Boolean;
        signed char SByte;
        unsigned char Byte;
        short Int16;
        unsigned short UInt16;
        int Int32;
        unsigned int UInt32;
        long long Int64;
        unsigned long long UInt64;
        float Float;
        double Double;
        long long DateTime;
        OpcUa_StatusCode StatusCode;
        OpcUa_Octets Octets;         // String (UTF-8) and ByteString; owned
        OpcUa_DataValue* DataValue;  // owned, never null while Datatype is DataValue
    } Value;
};

// A value with its quality and its source time (a file time). The value itself is never a DataValue.
struct OpcUa_DataValue {
    OpcUa_Variant Value;
    OpcUa_StatusCode StatusCode;
    long long SourceTimestamp;
};

DORVEL_HOST_API void OpcUa_Variant_Initialize(OpcUa_Variant* variant);
DORVEL_HOST_API void OpcUa_Variant_Clear(OpcUa_Variant* variant);

// A variant that owns its value: it starts null, copies deeply and frees at its end.
//
// Setters replace the value. Getters convert a copy by the rules of ChangeType; on failure their argument is
// unchanged. A DataValue is read as the value inside. Getters and ChangeType return OpcUa_Good,
// OpcUa_BadTypeMismatch (no such conversion, or a text that is not such a value), OpcUa_BadOutOfRange (the
// value does not fit) or OpcUa_BadNoData (null).
class DORVEL_HOST_API OpcUa_VariantHlp : public OpcUa_Variant {
public:
    OpcUa_VariantHlp();
    OpcUa_VariantHlp(OpcUa_VariantHlp const& other);
    OpcUa_VariantHlp(OpcUa_VariantHlp&& other) noexcept;
    OpcUa_VariantHlp& operator=(OpcUa_VariantHlp const& other);
    OpcUa_VariantHlp& operator=(OpcUa_VariantHlp&& other) noexcept;
    ~OpcUa_VariantHlp();

    // Makes *target a deep copy of *source; what *target held is freed.
    static void CopyVariants(OpcUa_Variant* target, OpcUa_Variant const* source);

    _OpcUa_BuiltInType GetType() const { return static_cast<_OpcUa_BuiltInType>(Datatype); }

    void SetBool(bool value);
    void SetInt(int value);
    void SetUInt(unsigned int value);
    void SetInt64(long long value);
    void SetUInt64(unsigned long long value);
    void SetFloat(float value);
    void SetDouble(double value);
    void SetTime(long long const& fileTime);
    void SetStatusCode(OpcUa_StatusCode status);
    // A String of the octets up to the zero, or of exactly length octets. SetUTF8String requires valid UTF-8;
    // SetString takes any octets.
    void SetUTF8String(char const* text);
    void SetUTF8String(char const* text, int length);
    void SetString(char const* text, int length);
    void SetByteString(char const* octets, int length);
    // Makes this a DataValue that takes ownership of value, which is null afterwards. Of a value that is a
    // DataValue itself, only the value inside is taken.
    void SetDataValue(OpcUa_VariantHlp& value, long long fileTime, OpcUa_StatusCode status);

    OpcUa_StatusCode GetBool(bool& value) const;
    OpcUa_StatusCode GetInt(int& value) const;
    OpcUa_StatusCode GetUInt(unsigned int& value) const;
    OpcUa_StatusCode GetInt64(long long& value) const;
    OpcUa_StatusCode GetUInt64(unsigned long long& value) const;
    OpcUa_StatusCode GetDouble(double& value) const;
    OpcUa_StatusCode GetString(std::string& value) const;
    // A file time in UTC, for kind 1; any other kind gives OpcUa_BadTypeMismatch.
    OpcUa_StatusCode GetTime(long long& fileTime, int kind) const;

    // Converts in place by the rules of OPC 10000-4 (table of conversion rules): explicit and implicit.
    // Floating point is rounded to an integer by adding 0.5 and rounding down; texts are the lexical forms of
    // XML Schema ("true", "1.5E3", "-INF", "2024-03-15T12:00:00Z"). A failed conversion leaves null.
    // Converting to DataValue wraps the value with status good and time 0; converting a DataValue converts
    // the value inside and drops status and time.
    OpcUa_StatusCode ChangeType(_OpcUa_BuiltInType type);

    // Replaces a DataValue by the value inside; other values are unchanged. The status and the source time of
    // the DataValue go to the pointers that are not null.
    void Normalize(unsigned int* status, _OpcUa_DateTime* time);
};

// Equal types and values; NaN equals NaN. DataValues compare value, status and time.
DORVEL_HOST_API bool operator==(OpcUa_Variant const& left, OpcUa_Variant const& right);
inline bool operator!=(OpcUa_Variant const& left, OpcUa_Variant const& right) {
    return !(left == right);
}
