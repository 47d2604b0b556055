#include "ErrorPdu.h"
#include "MessageTable.h"

namespace {

constexpr MessageRow ErrorClasses[] = {
    {0, "Device"},   {1, "Object"}, {2, "Property"},      {3, "Resources"},           {4, "Security"},
    {5, "Services"}, {6, "Vt"},     {7, "Communication"}, {AnyOther, "UnknownError"},
};

constexpr MessageRow ErrorCodes[] = {
    {0, "Other"},
    {1, "AuthenticationFailed"},
    {2, "ConfigurationInProgress"},
    {3, "DeviceBusy"},
    {4, "DynamicCreationNotSupported"},
    {5, "FileAccessDenied"},
    {6, "IncompatibleSecurityLevels"},
    {7, "InconsistentParameters"},
    {8, "InconsistentSelectionCriterion"},
    {9, "InvalidDataType"},
    {10, "InvalidFileAccessMethod"},
    {11, "InvalidFileStartPosition"},
    {12, "InvalidOperatorName"},
    {13, "InvalidParameterDataType"},
    {14, "InvalidTimeStamp"},
    {15, "KeyGenerationError"},
    {16, "MissingRequiredParameter"},
    {17, "NoObjectsOfSpecifiedType"},
    {18, "NoSpaceForObject"},
    {19, "NoSpaceToAddListElement"},
    {20, "NoSpaceToWriteProperty"},
    {21, "NoVtSessionsAvailable"},
    {22, "PropertyIsNotAList"},
    {23, "ObjectDeletionNotPermitted"},
    {24, "ObjectIdentifierAlreadyExists"},
    {25, "OperationalProblem"},
    {26, "PasswordFailure"},
    {27, "ReadAccessDenied"},
    {28, "SecurityNotSupported"},
    {29, "ServiceRequestDenied"},
    {30, "Timeout"},
    {31, "UnknownObject"},
    {32, "UnknownProperty"},
    {33, "Reserved1"},
    {34, "UnknownVtClass"},
    {35, "UnknownVtSession"},
    {36, "UnsupportedObjectType"},
    {37, "ValueOutOfRange"},
    {38, "VtSessionAlreadyClosed"},
    {39, "VtSessionTerminationFailure"},
    {40, "WriteAccessDenied"},
    {41, "CharacterSetNotSupported"},
    {42, "InvalidArrayIndex"},
    {43, "CovSubscriptionFailed"},
    {44, "NotCovProperty"},
    {45, "OptionalFunctionalityNotSupported"},
    {46, "InvalidConfigurationData"},
    {47, "DatatypeNotSupported"},
    {48, "DuplicateName"},
    {49, "DuplicateObjectId"},
    {50, "PropertyIsNotAnArray"},
    {51, "MaxBacnetErrorCode"},
    {256, "FirstProprietaryErrorCode"},
    {65535, "LastProprietaryErrorCode"},
    {AnyOther, "UnknownCode"},
};

}  // namespace

std::string ErrorPdu::Message(ErrorClassEnum group) {
    return FindMessage(ErrorClasses, static_cast<int>(group));
}

std::string ErrorPdu::Message(ErrorCodeEnum code) {
    return FindMessage(ErrorCodes, static_cast<int>(code));
}
