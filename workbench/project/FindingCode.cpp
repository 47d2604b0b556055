#include "FindingCode.h"

#include <cstddef>

namespace workbench {

namespace {

using Code = FindingCode;

constexpr Severity Error = Severity::Error;
constexpr Severity Warning = Severity::Warning;

}  // namespace

std::vector<FindingRow> const& FindingRows() {
    static std::vector<FindingRow> const rows = {
        {Code::UnreadableFile, Error, "unreadable-file", "nothing of it is checked",
         "Check the path and the rights of the file; one that is too long can load parts of itself with "
         "require."},
        {Code::ScriptError, Error, "script-error",
         "the project does not run, and what follows is not checked", "Correct the script at this line."},
        {Code::NoBlock, Error, "no-block", "nothing is polled", "Make a block with BACnet.new{...}."},
        {Code::WrongKind, Error, "wrong-kind", "a controller converts the value, or takes 0 or an empty text",
         "Give the field a value of the kind that it needs."},
        {Code::UnreadableTable, Error, "unreadable-table", "the block is not made",
         "Write the table as { Field = value, ... }."},
        {Code::UnnamedEntry, Error, "unnamed-entry", "the value is not used", "Write Field = value."},
        {Code::UnknownField, Error, "unknown-field", "a controller ignores it",
         "Correct the name of the field, or remove it."},
        {Code::MissingField, Error, "missing-field", "a controller takes its default", "Add the field."},
        {Code::EmptyText, Error, "empty-text", "the project does not run", "Give the field a text."},
        {Code::OutOfRange, Error, "out-of-range",
         "a controller cuts the number, or works as if it were missing",
         "Use a number of the range that is allowed."},
        {Code::BadAddress, Error, "bad-address", "the block does not poll, or polls another address",
         "Correct the address."},
        {Code::UnknownName, Error, "unknown-name", "a controller takes another one",
         "Use one of the names that exist."},
        {Code::WrongElementType, Error, "wrong-element-type", "the variable is not made",
         "Use ElementType with Type = \"DataValue\", and only there."},
        {Code::ControllerField, Error, "controller-field", "the project does not run", "Remove the field."},
        {Code::WorkbenchField, Error, "workbench-field", "the project does not run",
         "Correct the field, or remove it: no controller has it."},
        {Code::NameTaken, Error, "name-taken", "the project does not run", "Choose another name."},
        {Code::BadSet, Error, "bad-set", "the value is not written", "Correct the name or the value."},
        {Code::NotDecoded, Error, "not-decoded", "", "Remove the variable."},
        {Code::LightingOutput, Error, "lighting-output", "",
         "Remove the variable, or read the lamp from an object of another type of the device."},
        {Code::AveragingPresentValue, Error, "averaging-present-value", "",
         "Read minimum-value, average-value or maximum-value."},
        {Code::SentAsOtherProperty, Error, "sent-as-other-property", "", "Remove the variable."},
        {Code::DuplicateProperty, Error, "duplicate-property", "",
         "Use the first variable in both places, and remove this one."},
        {Code::MisreadFeedback, Warning, "misread-feedback", "",
         "Read the feedback from a Binary Input of the device."},
        {Code::SignNotRead, Warning, "sign-not-read", "",
         "Use an Analog Value for values below zero, or correct the sign in the application."},
        {Code::NeverConverts, Error, "never-converts", "", "Declare a type that takes the value."},
        {Code::MayNotConvert, Warning, "may-not-convert", "", "Declare a type that takes every value."},
        {Code::LosesInformation, Warning, "loses-information", "", "Declare a type that holds the value."},
        {Code::CountCut, Warning, "count-cut", "",
         "Declare UInt32 or Int32, so that the limit shows, and expect the count to begin again at 0."},
        {Code::NoQuality, Warning, "no-quality", "",
         "Declare Type = \"DataValue\" and this type as ElementType."},
        {Code::WriteRefused, Error, "write-refused", "", "Remove Write = true."},
        {Code::WriteOtherProperty, Warning, "write-other-property", "",
         "Remove Write = true, and write through a variable on present-value."},
        {Code::WriteSign, Warning, "write-sign", "",
         "Write only values below 128, or use an object of another type."},
        {Code::WriteText, Warning, "write-text", "", "Declare a number, a Boolean or a time."},
        {Code::PriorityWithoutEffect, Warning, "priority-on-schedule", "",
         "Put the variable into its own block, without Priority."},
        {Code::MacMissing, Warning, "mac-missing", "",
         "Set MAC to the address of the device on its network."},
        {Code::MacDiffers, Warning, "mac-differs", "",
         "Set Address to the device, or NetworkNumber if it is behind a router."},
        {Code::BroadcastAddress, Warning, "broadcast-address", "", "Set MAC to the address of one device."},
        {Code::FieldWithoutEffect, Warning, "field-without-effect", "", "Remove the field."},
        {Code::LongSilence, Warning, "long-silence", "", "Use a CountRepeat from 1 to 60; 3 is the default."},
        {Code::SimilarUnit, Warning, "similar-unit", "",
         "Use the name of the standard, or leave it if it is the unit of a vendor."},
        {Code::UnitNotShown, Warning, "unit-not-shown", "", "Remove Unit."},
        {Code::StateTextsNotShown, Warning, "state-texts-not-shown", "", "Remove StateTexts."},
        {Code::StateTextsMissing, Warning, "state-texts-missing", "",
         "Write two texts: the first for inactive, the second for active."},
        {Code::SharedTask, Warning, "shared-task", "", "Give each device its own task."},
        {Code::ShortPeriod, Warning, "short-period", "", "Make the period longer, or use more tasks."},
        {Code::ObjectPolledTwice, Warning, "object-polled-twice", "",
         "Put all variables of an object into one block."},
        {Code::SimilarNames, Warning, "similar-names", "", "Give them names that differ more."},
        {Code::UnusedDefine, Warning, "unused-define", "", "Correct the name, or remove the option."},
    };
    return rows;
}

FindingRow const& RowOf(FindingCode code) {
    return FindingRows().at(static_cast<std::size_t>(code));
}

}  // namespace workbench
