#pragma once

// The built-in types of OPC 10000-6, table 1, by their numbers there. The runtime stores values of the
// types from Boolean to ByteString, StatusCode and DataValue; the others are named for completeness. An
// octet, as in OpcUa_Variant.
enum _OpcUa_BuiltInType : unsigned char {
    OpcUaType_Null = 0,
    OpcUaType_Boolean = 1,
    OpcUaType_SByte = 2,
    OpcUaType_Byte = 3,
    OpcUaType_Int16 = 4,
    OpcUaType_UInt16 = 5,
    OpcUaType_Int32 = 6,
    OpcUaType_UInt32 = 7,
    OpcUaType_Int64 = 8,
    OpcUaType_UInt64 = 9,
    OpcUaType_Float = 10,
    OpcUaType_Double = 11,
    OpcUaType_String = 12,
    OpcUaType_DateTime = 13,
    OpcUaType_Guid = 14,
    OpcUaType_ByteString = 15,
    OpcUaType_XmlElement = 16,
    OpcUaType_NodeId = 17,
    OpcUaType_ExpandedNodeId = 18,
    OpcUaType_StatusCode = 19,
    OpcUaType_QualifiedName = 20,
    OpcUaType_LocalizedText = 21,
    OpcUaType_ExtensionObject = 22,
    OpcUaType_DataValue = 23,
    OpcUaType_Variant = 24,
    OpcUaType_DiagnosticInfo = 25
};

// The declared type of a variable: a built-in type and, when that is DataValue, the type of the value
// inside.
struct OpcUa_BuiltInTypeHlp {
    _OpcUa_BuiltInType Type = OpcUaType_Null;
    _OpcUa_BuiltInType ElementType = OpcUaType_Null;

    OpcUa_BuiltInTypeHlp() = default;
    OpcUa_BuiltInTypeHlp(_OpcUa_BuiltInType type, _OpcUa_BuiltInType elementType = OpcUaType_Null)
        : Type(type), ElementType(elementType) {}
};
