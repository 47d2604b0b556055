#include "ObjectType.h"

#include "ObjectTypeRows.h"

namespace standard {

PropertyRow const* ObjectType::Find(PropertyId id) const {
    for (PropertyRows const& group : groups) {
        for (PropertyRow const& row : group) {
            if (row.id == id) {
                return &row;
            }
        }
    }
    return nullptr;
}

std::vector<ObjectType> const& AllObjectTypes() {
    static std::vector<ObjectType> const all = [] {
        std::vector<ObjectType> types;
        for (rows::ObjectTypes const& family :
             {rows::AnalogTypes(), rows::BinaryTypes(), rows::MultiStateTypes(), rows::ValueTypes(),
              rows::MeterTypes(), rows::ControlTypes()}) {
            types.insert(types.end(), family.begin(), family.end());
        }
        return types;
    }();
    return all;
}

ObjectType const* ObjectTypeOfName(std::string_view name) {
    for (ObjectType const& type : AllObjectTypes()) {
        if (type.name == name) {
            return &type;
        }
    }
    return nullptr;
}

}  // namespace standard
