// The delivery of a value: a BACnet value becomes a value of the runtime here only.

#include "StoreValue.h"
#include "TBACnet.h"
#include "dorvelshare/RTime.h"

namespace dorvel::BACnet {

void TBACnet::ProcessResponseForTag(PropertyTypeEnum type, DriverVarDsc const* descriptor,
                                    CPropertyValue& value, unsigned int status, WriteDataRec& record) {
    record.Id = descriptor->ReadId;
    record.Field = descriptor->ReadField;
    record.Index = 0;
    record.Reserved = 0;

    OpcUa_BuiltInTypeHlp const& declared = descriptor->ReadType;
    if (declared.Type != OpcUaType_DataValue) {
        if (StoreValue(type, value, localTimeDiff, record.Value)) {
            record.Value.ChangeType(declared.Type);
        }
        return;
    }
    OpcUa_VariantHlp element;
    if (StoreValue(type, value, localTimeDiff, element)) {
        element.ChangeType(declared.ElementType);
        record.Value.SetDataValue(element, getRDateTime(), status);
    }
}

}  // namespace dorvel::BACnet
