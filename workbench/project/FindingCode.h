#pragma once

#include <vector>

namespace workbench {

// An error is a point or a block that cannot work; a warning is one that works, but not always as meant.
enum class Severity { Error, Warning };

// What `check` finds. docs/findings.md has a section for each code.
enum class FindingCode {
    // Mistakes in the project, which end `run` too.
    UnreadableFile,
    ScriptError,
    NoBlock,
    WrongKind,
    UnreadableTable,
    UnnamedEntry,
    UnknownField,
    MissingField,
    EmptyText,
    OutOfRange,
    BadAddress,
    UnknownName,
    WrongElementType,
    ControllerField,
    WorkbenchField,
    NameTaken,
    BadSet,
    // What the driver makes of the objects and properties.
    NotDecoded,
    LightingOutput,
    AveragingPresentValue,
    SentAsOtherProperty,
    DuplicateProperty,
    MisreadFeedback,
    SignNotRead,
    // Conversions to the declared type.
    NeverConverts,
    MayNotConvert,
    LosesInformation,
    CountCut,
    NoQuality,
    // Writes.
    WriteRefused,
    WriteOtherProperty,
    WriteSign,
    WriteText,
    PriorityWithoutEffect,
    // Addresses and fields of a block.
    MacMissing,
    MacDiffers,
    BroadcastAddress,
    FieldWithoutEffect,
    LongSilence,
    // Units and state texts.
    SimilarUnit,
    UnitNotShown,
    StateTextsNotShown,
    StateTextsMissing,
    // Blocks side by side.
    SharedTask,
    ShortPeriod,
    ObjectPolledTwice,
    SimilarNames,
    UnusedDefine,
};

struct FindingRow {
    FindingCode code;
    Severity severity;
    char const* name;    // for people and programs; it does not change
    char const* effect;  // of a mistake, on a controller; empty if the message states the effect
    char const* advice;  // what to do, if the finding has none
};

FindingRow const& RowOf(FindingCode code);
// In the order of FindingCode.
std::vector<FindingRow> const& FindingRows();

}  // namespace workbench
