#include "StateTexts.h"

#include <algorithm>

#include "FieldValue.h"
#include "Printable.h"
#include "PropertyDatatype.h"

namespace workbench {

using standard::Datum;
using standard::PropertyId;
using Effect = ImportLine::Effect;

namespace {

bool HasProperty(ObjectRecord const& object, PropertyId property) {
    return standard::DatatypeOf(object.id.type, static_cast<std::uint32_t>(property)).has_value();
}

std::string Trimmed(std::string const& text) {
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// The text without the number of its state: "1=off", "1: off".
std::string WithoutNumber(std::string const& text) {
    std::size_t const end = text.find_first_not_of("0123456789");
    bool const isNumbered = end != std::string::npos && end > 0 && (text[end] == '=' || text[end] == ':');
    return isNumbered ? Trimmed(text.substr(end + 1)) : text;
}

// Several texts in one field; none if nothing separates them.
std::vector<std::string> TextsIn(std::string const& field) {
    for (char const separator : {'|', ';', '\n', ',', '/'}) {
        if (field.find(separator) == std::string::npos) {
            continue;
        }
        std::vector<std::string> texts;
        for (std::size_t begin = 0; begin <= field.size();) {
            std::size_t const end = std::min(field.find(separator, begin), field.size());
            texts.push_back(WithoutNumber(Trimmed(field.substr(begin, end - begin))));
            begin = end + 1;
        }
        return texts;
    }
    return {};
}

// The texts in columns of their own, without empty ones at the end. Of several for a state, the first one.
std::vector<std::string> TextsOfColumns(EdeRow const& row) {
    std::vector<std::string> texts;
    for (EdeLayout::StateField const& column : row.layout.stateTexts) {
        if (column.field >= row.row.fields.size()) {
            break;
        }
        std::string const& text = row.row.fields[column.field].text;
        if (text.empty()) {
            continue;
        }
        texts.resize(std::max(texts.size(), column.state));
        std::string& known = texts[column.state - 1];
        if (!known.empty() && known != text) {
            row.Report(column.field, row.layout.headings[column.field], Effect::ValueNotUsed,
                       tools::Quoted(text) + " is a second text of state " + std::to_string(column.state));
        }
        known = known.empty() ? text : known;
    }
    return texts;
}

// Reports the texts in columns of their own.
void ReportColumns(EdeRow const& row, std::string const& reason) {
    for (EdeLayout::StateField const& column : row.layout.stateTexts) {
        if (column.field < row.row.fields.size() && !row.row.fields[column.field].text.empty()) {
            row.Report(column.field, row.layout.headings[column.field], Effect::ValueNotUsed,
                       tools::Quoted(row.row.fields[column.field].text) + reason);
        }
    }
}

std::vector<std::string> ReferencedTexts(EdeRow const& row, CodeTexts const& stateTexts) {
    std::string const& text = row.TextOf(EdeColumn::StateTextReference);
    auto const number = WholeNumberOf(text, UINT32_MAX - 1);
    if (!number) {
        std::vector<std::string> texts = text.empty() ? std::vector<std::string>() : TextsIn(text);
        if (texts.empty() && !text.empty()) {
            row.Report(EdeColumn::StateTextReference, Effect::ValueNotUsed,
                       tools::Quoted(text) +
                           " is not a reference; allowed are the number of a row of the state "
                           "texts, and texts with a \"|\" between them");
        }
        return texts;
    }
    // Some lists have 0 where there is no reference.
    if (!stateTexts.Has(*number) && *number != 0) {
        row.Report(EdeColumn::StateTextReference, Effect::ValueNotUsed,
                   stateTexts.File().empty()
                       ? "there is no file of state texts with the number " + std::to_string(*number)
                       : tools::Printable(stateTexts.File()) + " has no row with the number " +
                             std::to_string(*number));
    }
    return stateTexts.Of(*number);
}

void SetMultiState(std::vector<std::string> const& texts, ObjectRecord& object) {
    std::vector<Datum> values;
    for (std::string const& text : texts) {
        values.push_back(TextDatum(text));
    }
    object.Set(PropertyId::Number_Of_States, {UnsignedDatum(static_cast<std::uint32_t>(texts.size()))});
    object.Set(PropertyId::State_Text, std::move(values));
}

}  // namespace

void SetStateTexts(std::vector<std::string> const& texts, ObjectRecord& object) {
    if (texts.empty()) {
        return;
    }
    if (HasProperty(object, PropertyId::State_Text)) {
        SetMultiState(texts, object);
    } else if (HasProperty(object, PropertyId::Inactive_Text)) {
        object.Set(PropertyId::Inactive_Text, {TextDatum(texts[0])});
        object.Set(PropertyId::Active_Text, {TextDatum(texts.size() > 1 ? texts[1] : std::string())});
    }
}

void SetStateTexts(EdeRow const& row, CodeTexts const& stateTexts, ObjectRecord& object) {
    bool const isBinary = HasProperty(object, PropertyId::Inactive_Text);
    std::string const& reference = row.TextOf(EdeColumn::StateTextReference);
    if (!isBinary && !HasProperty(object, PropertyId::State_Text)) {
        if (!reference.empty()) {
            object.listed[HeadingOf(EdeColumn::StateTextReference)] = reference;
        }
        ReportColumns(row, " is the text of a state, which objects of this type do not have");
        return;
    }
    std::vector<std::string> texts = ReferencedTexts(row, stateTexts);
    std::vector<std::string> ofColumns = TextsOfColumns(row);
    if (texts.empty()) {
        texts = std::move(ofColumns);
    } else if (!ofColumns.empty() && ofColumns != texts) {
        ReportColumns(row, " is left out, because the texts of the reference are others");
    }
    if (isBinary && texts.size() > 2) {
        row.Report(EdeColumn::StateTextReference, Effect::ValueNotUsed,
                   "a binary object has two states; the texts after the second are left out");
    }
    SetStateTexts(texts, object);
}

std::optional<Datum> StateOf(ObjectRecord const& object, std::string const& text) {
    std::vector<std::string> const texts = StateTextsOf(object);
    auto const found = std::find(texts.begin(), texts.end(), text);
    if (found == texts.end() || std::find(found + 1, texts.end(), text) != texts.end()) {
        return std::nullopt;
    }
    auto const index = static_cast<std::uint32_t>(found - texts.begin());
    bool const isMultiState = object.Values(PropertyId::State_Text) != nullptr;
    return isMultiState ? UnsignedDatum(index + 1) : EnumeratedDatum(index);
}

}  // namespace workbench
