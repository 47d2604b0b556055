#pragma once

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "Plants.h"

namespace test {

// Plants whose devices answer anything: names of any octets, properties of any datatype, objects twice.
class Hostile {
public:
    std::string Name() {
        static std::string const characters = std::string("\0\n\r\"\\ =.-[]{}\x7F\xC3\xA9\x80\xFF") + "aAbB1";
        std::string name;
        std::size_t const length = random() % 20 == 0 ? random() % 10000 : random() % 6;
        for (std::size_t i = 0; i < length; ++i) {
            name += characters[random() % characters.size()];
        }
        return name;
    }

    Datum Value() {
        switch (random() % 8) {
            case 0:
                return Unsigned(random() * std::uint64_t{random()});
            case 1:
                return Enumerated(random() % 300);
            case 2:
                return Signed(static_cast<int>(random()));
            case 3:
                return Real(random() % 5 == 0 ? HUGE_VAL : static_cast<float>(random()));
            case 4:
                return Real(random() % 5 == 0 ? NAN : 1e300, DatumKind::Double);
            case 5:
                return Text(Name());
            case 6:
                return Text("0101", DatumKind::BitString);
            default:
                return Calendar(DatumKind::Date, {255, 13, 32, static_cast<std::uint8_t>(random())});
        }
    }

    workbench::ObjectRecord Object() {
        static std::uint16_t const types[] = {0,  1,  2,  3,  4,  5,  6,  12, 13, 14, 17, 18, 19,
                                              23, 24, 39, 40, 42, 44, 45, 46, 47, 48, 50, 54, 1023};
        workbench::ObjectRecord object =
            test::Object(types[random() % std::size(types)], random() % 4194304, Name(), {});
        object.id.instance %= random() % 2 == 0 ? 5 : 4194304;
        for (std::size_t i = random() % 12; i > 0; --i) {
            PropertyId const property =
                random() % 2 == 0 ? PropertyId::Present_Value : static_cast<PropertyId>(random() % 200);
            object.Set(property, std::vector<Datum>(random() % 4 == 0 ? 3 : 1, Value()));
        }
        object.Set(PropertyId::State_Text, {Text(Name()), Text(Name())});
        object.Set(PropertyId::Description, {Text(Name())});
        object.Set(PropertyId::Units, {Value()});
        object.listed["keyname"] = Name();
        object.listed["unit-code"] = Name();
        return object;
    }

    workbench::Inventory Plant() {
        workbench::Inventory plant;
        for (std::size_t i = random() % 5; i > 0; --i) {
            std::vector<workbench::ObjectRecord> objects;
            for (std::size_t j = random() % 12; j > 0; --j) {
                objects.push_back(Object());
            }
            auto const last = static_cast<std::uint8_t>(i);
            standard::Octets const mac(random() % 8, 'x');
            plant.devices.push_back(Device(random() % 3, Name(),
                                           random() % 2 == 0 ? Local(last) : Behind(last, 5, mac),
                                           std::move(objects)));
            plant.devices.back().notes = {Name()};
        }
        return plant;
    }

private:
    std::mt19937 random{13};
};

}  // namespace test
