#include "CPropertyValue.h"

std::vector<Tag> CPropertyValue::ToApplicationTags() const {
    return {ToApplicationTag()};
}

std::vector<std::unique_ptr<TagBase>> CPropertyValue::ToApplicationComplexTags() const {
    return {};
}

int CPropertyValue::Compare(CPropertyValue& /*other*/) const {
    return 0;
}
