#include "BodyObject.h"

#include <rapidjson/error/en.h>

namespace workbench {

BodyObject::BodyObject(std::string const& body) {
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    document.Parse<flags>(body.data(), body.size());
    if (document.HasParseError()) {
        mistake = "the body is not JSON: octet " + std::to_string(document.GetErrorOffset()) + ": " +
                  rapidjson::GetParseError_En(document.GetParseError());
    } else if (!document.IsObject()) {
        mistake = "the body is not a JSON object";
    }
}

std::optional<std::string> BodyObject::Text(char const* name) const {
    rapidjson::Value const* const member = Member(name);
    if (!member || !member->IsString()) {
        return {};
    }
    return std::string(member->GetString(), member->GetStringLength());
}

rapidjson::Value const* BodyObject::Member(char const* name) const {
    if (!document.IsObject()) {
        return nullptr;
    }
    auto const found = document.FindMember(name);
    return found == document.MemberEnd() ? nullptr : &found->value;
}

}  // namespace workbench
