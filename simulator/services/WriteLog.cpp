#include "WriteLog.h"

#include "TagText.h"

namespace simulator {

namespace {

struct Row {
    int code;
    char const* name;
};

constexpr Row kErrors[] = {
    {static_cast<int>(ErrorCode::InvalidDataType), "invalid-data-type"},
    {static_cast<int>(ErrorCode::UnknownObject), "unknown-object"},
    {static_cast<int>(ErrorCode::UnknownProperty), "unknown-property"},
    {static_cast<int>(ErrorCode::ValueOutOfRange), "value-out-of-range"},
    {static_cast<int>(ErrorCode::WriteAccessDenied), "write-access-denied"},
    {static_cast<int>(ErrorCode::CharacterSetNotSupported), "character-set-not-supported"},
    {static_cast<int>(ErrorCode::InvalidArrayIndex), "invalid-array-index"},
    {static_cast<int>(ErrorCode::PropertyIsNotAnArray), "property-is-not-an-array"},
};

constexpr Row kRejects[] = {
    {static_cast<int>(RejectReason::InvalidParameterDataType), "invalid-parameter-data-type"},
    {static_cast<int>(RejectReason::InvalidTag), "invalid-tag"},
    {static_cast<int>(RejectReason::MissingRequiredParameter), "missing-required-parameter"},
    {static_cast<int>(RejectReason::ParameterOutOfRange), "parameter-out-of-range"},
    {static_cast<int>(RejectReason::TooManyArguments), "too-many-arguments"},
};

template <std::size_t count>
std::string nameOfCode(Row const (&rows)[count], int code) {
    for (Row const& row : rows) {
        if (row.code == code) {
            return row.name;
        }
    }
    return std::to_string(code);
}

}  // namespace

void WriteLog::asked(WriteRequest const& request) {
    if (!m_observer) {
        return;
    }
    m_what += ' ' + textOfObject(request.object) + ' ' + nameOf(request.property);
    if (request.index) {
        m_what += '[' + std::to_string(*request.index) + ']';
    }
    m_what += " = " + textOfTags(request.value);
    if (request.priority) {
        m_what += ", priority " + std::to_string(*request.priority);
    }
}

void WriteLog::refused(ErrorCode code) {
    tell("refused, " + nameOfCode(kErrors, static_cast<int>(code)));
}

void WriteLog::rejected(RejectReason reason) {
    tell("rejected, " + nameOfCode(kRejects, static_cast<int>(reason)));
}

void WriteLog::tell(std::string const& outcome) {
    if (m_observer) {
        m_observer(m_what + ": " + outcome);
    }
}

}  // namespace simulator
