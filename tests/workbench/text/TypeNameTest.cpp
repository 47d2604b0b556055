#include "TypeName.h"

#include <gtest/gtest.h>

using namespace workbench;

namespace {

TEST(TypeName, IsTheNameByOpcUa) {
    EXPECT_EQ(FindType("Float"), OpcUaType_Float);
    EXPECT_EQ(FindType("dataVALUE"), OpcUaType_DataValue);
    EXPECT_EQ(FindType(13), OpcUaType_DateTime);
    EXPECT_FALSE(FindType("Guid"));
    EXPECT_FALSE(FindType(std::string_view("Float\0x", 7)));
    EXPECT_FALSE(FindType(14));
    EXPECT_FALSE(FindType(0));
    EXPECT_EQ(TypeName(OpcUaType_String), "String");
    EXPECT_EQ(TypeName({OpcUaType_DataValue, OpcUaType_Int32}), "DataValue(Int32)");
    EXPECT_EQ(TypeName(OpcUaType_Guid), "Type 14");
}

}  // namespace
