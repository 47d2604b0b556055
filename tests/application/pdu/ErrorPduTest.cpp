#include "ErrorPdu.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <typeinfo>

#include "Apdu.h"
#include "ErrorResponseException.h"

using test::ForgedPdu;
using test::ParseAs;
using test::ToHex;

namespace {

using Choice = ConfirmedServiceChoiceEnum;

// An error that is not a SimpleError.
class OtherError : public ErrorBase {
public:
    test::Octets GetBytes() const override { return test::Hex("EE"); }
    bool Equals(ErrorBase&) const override { return false; }
};

ErrorPdu ErrorOf(ErrorClassEnum group, ErrorCodeEnum code) {
    return ErrorPdu(7, Choice::ReadProperty, new SimpleError(group, code));
}

std::string MessageOfClass(int number) {
    return ErrorPdu::Message(static_cast<ErrorClassEnum>(number));
}

std::string MessageOfCode(int number) {
    return ErrorPdu::Message(static_cast<ErrorCodeEnum>(number));
}

}  // namespace

TEST(SimpleError, IsTwoEnumeratedTagsOfOneOctet) {
    EXPECT_EQ(ToHex(SimpleError(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject).GetBytes()),
              "91 02 91 1F");
    EXPECT_EQ(ToHex(SimpleError().GetBytes()), "91 00 91 00");
}

TEST(SimpleError, NumbersAbove255LoseTheirUpperBits) {
    SimpleError const error(static_cast<ErrorClassEnum>(0x1FE), ErrorCodeEnum::FirstProprietaryErrorCode);
    EXPECT_EQ(ToHex(error.GetBytes()), "91 FE 91 00");
}

TEST(SimpleError, EqualsComparesClassAndCodeAndThrowsForAnotherClass) {
    SimpleError one(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    SimpleError same(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    SimpleError otherClass(ErrorClassEnum::Object, ErrorCodeEnum::UnknownObject);
    SimpleError otherCode(ErrorClassEnum::Property, ErrorCodeEnum::Timeout);
    OtherError foreign;
    ErrorBase& base = same;
    EXPECT_TRUE(one.Equals(same));
    EXPECT_TRUE(one.Equals(base));
    EXPECT_FALSE(one.Equals(otherClass));
    EXPECT_FALSE(one.Equals(otherCode));
    EXPECT_THROW(one.Equals(foreign), std::bad_cast);
}

TEST(ErrorPdu, WritesInvokeIdServiceAndError) {
    EXPECT_EQ(ToHex(ErrorOf(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject).GetBytes()),
              "50 07 0C 91 02 91 1F");
    ErrorPdu const foreign(static_cast<char>(0xFF), Choice::WriteProperty, std::make_unique<OtherError>());
    EXPECT_EQ(ToHex(foreign.GetBytes()), "50 FF 0F EE");
}

TEST(ErrorPdu, DefaultHasNoError) {
    ErrorPdu const pdu;
    EXPECT_EQ(pdu.GetError(), nullptr);
    EXPECT_EQ(ToHex(pdu.GetBytes()), "50 00 00");
}

TEST(ErrorPdu, ComparesEqualToAnythingAndEqualsComparesContents) {
    ErrorPdu one = ErrorOf(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    ErrorPdu same = ErrorOf(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    ErrorPdu otherError = ErrorOf(ErrorClassEnum::Property, ErrorCodeEnum::Timeout);
    ErrorPdu otherId = ErrorOf(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    otherId.SetOriginalInvokeId(8);
    ErrorPdu otherService = ErrorOf(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    otherService.SetServiceChoice(Choice::WriteProperty);
    EXPECT_TRUE(one == otherError);
    EXPECT_TRUE(one.Equals(same));
    EXPECT_FALSE(one.Equals(otherError));
    EXPECT_FALSE(one.Equals(otherId));
    EXPECT_FALSE(one.Equals(otherService));
}

TEST(ErrorPdu, EqualsOfAPduIsTrueForItselfAndThrowsForAnotherClass) {
    ErrorPdu one = ErrorOf(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    ErrorPdu other = ErrorOf(ErrorClassEnum::Device, ErrorCodeEnum::UnknownObject);
    ForgedPdu forged(PduTypeEnum::Error);
    PDU& base = one;
    EXPECT_TRUE(base.Equals(one));
    EXPECT_FALSE(base.Equals(other));
    EXPECT_THROW(base.Equals(forged), std::bad_cast);
    EXPECT_TRUE(base == forged);
}

// The error here never equals anything, not even itself. The comparison by identity precedes it.
TEST(ErrorPdu, EqualsOfAPduIsTrueForTheSameObjectWhateverItsError) {
    ErrorPdu pdu(7, Choice::ReadProperty, std::make_unique<OtherError>());
    PDU& base = pdu;
    EXPECT_TRUE(base.Equals(pdu));
    EXPECT_FALSE(pdu.Equals(pdu));
}

TEST(ErrorPdu, NoErrorEqualsNoErrorOnly) {
    ErrorPdu none;
    ErrorPdu alsoNone;
    ErrorPdu some(0, Choice{}, std::make_unique<SimpleError>());
    EXPECT_TRUE(none.Equals(alsoNone));
    EXPECT_FALSE(none.Equals(some));
    EXPECT_FALSE(some.Equals(none));
}

TEST(ErrorPduParser, ReadsInvokeIdServiceClassAndCode) {
    auto const pdu = ParseAs<ErrorPdu>("50 07 0C 91 02 91 1F");
    EXPECT_EQ(pdu->GetOriginalInvokeId(), 7);
    EXPECT_EQ(static_cast<int>(pdu->GetServiceChoice()), 12);
    auto const& error = dynamic_cast<SimpleError&>(*pdu->GetError());
    EXPECT_EQ(static_cast<int>(error.GetErrorClass()), 2);
    EXPECT_EQ(static_cast<int>(error.GetErrorCode()), 31);
    EXPECT_EQ(ToHex(pdu->GetBytes()), "50 07 0C 91 02 91 1F");
}

TEST(ErrorPduParser, TwoOctetEnumerationKeepsItsHighOctetOnly) {
    auto const pdu = ParseAs<ErrorPdu>("50 07 0C 92 FE 02 92 01 1F");
    auto const& error = dynamic_cast<SimpleError&>(*pdu->GetError());
    EXPECT_EQ(static_cast<int>(error.GetErrorClass()), 0xFE);
    EXPECT_EQ(static_cast<int>(error.GetErrorCode()), 1);
}

TEST(ErrorPduParser, TheErrorPackIsReadWithAndWithoutAParser) {
    FakeStream first(test::Hex("91 01 91 1F"));
    EXPECT_EQ(ErrorPduParser::GetErrorPack(first)->GetErrorCode(), ErrorCodeEnum::UnknownObject);
    FakeStream second(test::Hex("91 01 91 1F"));
    EXPECT_EQ(ErrorPduParser().GetErrorPack(second)->GetErrorClass(), ErrorClassEnum::Object);
}

TEST(ErrorPduParser, TagNumbersAreIgnored) {
    EXPECT_EQ(ToHex(ParseAs<ErrorPdu>("50 07 0C 09 02 21 1F")->GetBytes()), "50 07 0C 91 02 91 1F");
}

TEST(ErrorPduParser, EachTruncationIsRefused) {
    test::ExpectEachTruncationRefused("50 07 0C 91 02 91 1F");
}

TEST(ErrorPduParser, MissingEmptyOrConstructedTagIsAFormatError) {
    for (char const* const apdu : {
             "50 07 0C",                    // neither tag
             "50 07 0C 91 02",              // no code
             "50 07 0C 90 91 1F",           // class without data
             "50 07 0C 91 02 90",           // code without data
             "50 07 0C 11 91 1F",           // a Boolean has no data
             "50 07 0C 0E 91 02 0F 91 1F",  // class in a constructed tag
             "50 07 0C 91 02 0E 0F",        // code in a constructed tag
         }) {
        SCOPED_TRACE(apdu);
        EXPECT_EQ(test::TextOf<FormatErrorException>([&] { test::ParseApdu(apdu); }),
                  "packet format not expected");
    }
}

TEST(ErrorPdu, MessageOfClass8AndCode52IsUnknownAndOfCode51TheBoundsName) {
    EXPECT_EQ(MessageOfClass(8), "UnknownError");
    EXPECT_EQ(MessageOfCode(52), "UnknownCode");
    EXPECT_EQ(MessageOfCode(51), "MaxBacnetErrorCode");
}

TEST(ErrorPdu, MessageOfEveryClass) {
    char const* const texts[] = {"Device",   "Object",   "Property", "Resources",
                                 "Security", "Services", "Vt",       "Communication"};
    for (int number = -2; number < 300; ++number) {
        bool const known = number >= 0 && number < static_cast<int>(std::size(texts));
        EXPECT_EQ(MessageOfClass(number), known ? texts[number] : "UnknownError") << number;
    }
}

TEST(ErrorPdu, MessageOfEveryCode) {
    std::vector<std::string> const texts{
        "Other",
        "AuthenticationFailed",
        "ConfigurationInProgress",
        "DeviceBusy",
        "DynamicCreationNotSupported",
        "FileAccessDenied",
        "IncompatibleSecurityLevels",
        "InconsistentParameters",
        "InconsistentSelectionCriterion",
        "InvalidDataType",
        "InvalidFileAccessMethod",
        "InvalidFileStartPosition",
        "InvalidOperatorName",
        "InvalidParameterDataType",
        "InvalidTimeStamp",
        "KeyGenerationError",
        "MissingRequiredParameter",
        "NoObjectsOfSpecifiedType",
        "NoSpaceForObject",
        "NoSpaceToAddListElement",
        "NoSpaceToWriteProperty",
        "NoVtSessionsAvailable",
        "PropertyIsNotAList",
        "ObjectDeletionNotPermitted",
        "ObjectIdentifierAlreadyExists",
        "OperationalProblem",
        "PasswordFailure",
        "ReadAccessDenied",
        "SecurityNotSupported",
        "ServiceRequestDenied",
        "Timeout",
        "UnknownObject",
        "UnknownProperty",
        "Reserved1",
        "UnknownVtClass",
        "UnknownVtSession",
        "UnsupportedObjectType",
        "ValueOutOfRange",
        "VtSessionAlreadyClosed",
        "VtSessionTerminationFailure",
        "WriteAccessDenied",
        "CharacterSetNotSupported",
        "InvalidArrayIndex",
        "CovSubscriptionFailed",
        "NotCovProperty",
        "OptionalFunctionalityNotSupported",
        "InvalidConfigurationData",
        "DatatypeNotSupported",
        "DuplicateName",
        "DuplicateObjectId",
        "PropertyIsNotAnArray",
        "MaxBacnetErrorCode",
    };
    std::map<int, std::string> const bounds{{256, "FirstProprietaryErrorCode"},
                                            {65535, "LastProprietaryErrorCode"}};
    ASSERT_EQ(texts.size(), 52u);
    for (int number = -2; number < 65600; ++number) {
        std::string expected = "UnknownCode";
        if (number >= 0 && number < 52) {
            expected = texts[static_cast<std::size_t>(number)];
        } else if (bounds.count(number) != 0) {
            expected = bounds.at(number);
        }
        ASSERT_EQ(MessageOfCode(number), expected) << number;
    }
}

TEST(ErrorResponseException, ClassAndCodeGiveATextThatNamesTheClassTwice) {
    ErrorResponseException const error(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject);
    EXPECT_STREQ(error.what(), "Recieved packet with error. Class Property Code Property");
    EXPECT_EQ(static_cast<int>(error.GetErrorClass()), 2);
    EXPECT_EQ(static_cast<int>(error.GetErrorCode()), 31);
    EXPECT_STREQ(ErrorResponseException(static_cast<ErrorClassEnum>(99), ErrorCodeEnum::Timeout).what(),
                 "Recieved packet with error. Class UnknownError Code UnknownError");
}

TEST(ErrorResponseException, OtherConstructorsKeepTheirText) {
    EXPECT_STREQ(ErrorResponseException().what(), "Recieved packet with error");
    EXPECT_STREQ(ErrorResponseException("text").what(), "text");
    EXPECT_STREQ(ErrorResponseException(std::string("text")).what(), "text");
    ErrorResponseException const whole("text", ErrorClassEnum::Vt, ErrorCodeEnum::Timeout);
    EXPECT_STREQ(whole.what(), "text");
    EXPECT_EQ(whole.GetErrorClass(), ErrorClassEnum::Vt);
    EXPECT_EQ(whole.GetErrorCode(), ErrorCodeEnum::Timeout);
    EXPECT_THROW(throw whole, std::runtime_error);
}
