#include "ObjectType.h"

#include "ObjectTypeRows.h"

namespace standard {

PropertyRow const* ObjectType::find(PropertyId id) const {
    for (PropertyRows const& group : groups) {
        for (PropertyRow const& row : group) {
            if (row.id == id) {
                return &row;
            }
        }
    }
    return nullptr;
}

std::vector<ObjectType> const& objectTypes() {
    static std::vector<ObjectType> const all = [] {
        std::vector<ObjectType> types;
        for (rows::ObjectTypes const& family :
             {rows::analogTypes(), rows::binaryTypes(), rows::multiStateTypes(), rows::valueTypes(),
              rows::meterTypes(), rows::controlTypes()}) {
            types.insert(types.end(), family.begin(), family.end());
        }
        return types;
    }();
    return all;
}

ObjectType const* objectTypeOfName(std::string_view name) {
    for (ObjectType const& type : objectTypes()) {
        if (type.name == name) {
            return &type;
        }
    }
    return nullptr;
}

}  // namespace standard
