#include "dorvelshare/VariableStore.h"

#include <gtest/gtest.h>

#include <thread>

#include "ScriptedNetwork.h"
#include "Variants.h"
#include "dorvelshare/LuaDataProvider.h"

using namespace test;

namespace {

WriteDataRec Record(long long id, std::string field, OpcUa_VariantHlp value) {
    WriteDataRec record;
    record.Id = id;
    record.Field = std::move(field);
    record.Value = std::move(value);
    return record;
}

class DataProvider : public testing::Test {
protected:
    OpcUa_StatusCode Read(long long id, OpcUa_BuiltInTypeHlp type) {
        return provider.ReadValue(id, 0, "", type, value, GetValueFlags::None);
    }

    ScriptedNetwork network;
    std::shared_ptr<VariableStore> store = std::make_shared<VariableStore>();
    LuaDataProvider provider{store, nullptr};
    long long variable = store->Declare("Temperature", OpcUaType_Double);
    OpcUa_VariantHlp value = Text("something from before");
};

}  // namespace

TEST(VariableStore, IdsArePositiveAndDistinct) {
    VariableStore store;
    long long const first = store.Declare("A", OpcUaType_Double);
    long long const second = store.Declare("A", {OpcUaType_DataValue, OpcUaType_Int32});
    EXPECT_GT(first, 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(store.Name(second), "A");
    EXPECT_EQ(store.Type(second).ElementType, OpcUaType_Int32);
}

TEST(VariableStore, ANewVariableIsNullWithoutData) {
    VariableStore store;
    VariableState state;
    ASSERT_TRUE(store.Read(store.Declare("A", OpcUaType_Double), "", state));
    EXPECT_EQ(state.Value, Null());
    EXPECT_EQ(state.Status, OpcUa_BadNoData);
    EXPECT_EQ(state.Time, 0);
}

TEST(VariableStore, UnknownIdsAreRejected) {
    VariableStore store;
    VariableState state;
    for (long long const id : {0, -1, 1}) {
        EXPECT_FALSE(store.Write(id, "", Int32(1), 1));
        EXPECT_FALSE(store.Read(id, "", state));
        EXPECT_EQ(store.Name(id), "");
        EXPECT_EQ(store.Type(id).Type, OpcUaType_Null);
    }
}

TEST(VariableStore, BareValuesAreGoodAndOfTheGivenTime) {
    VariableStore store;
    long long const id = store.Declare("A", OpcUaType_Double);
    VariableState state;
    EXPECT_TRUE(store.Write(id, "", Int32(5), 99));
    EXPECT_TRUE(store.Read(id, "", state));
    EXPECT_EQ(state.Value, Int32(5));
    EXPECT_EQ(state.Status, OpcUa_Good);
    EXPECT_EQ(state.Time, 99);
}

TEST(VariableStore, DataValuesAreSplit) {
    VariableStore store;
    long long const id = store.Declare("A", OpcUaType_Double);
    VariableState state;
    store.Write(id, "", DataValue(Int32(5), 77, OpcUa_Bad), 99);
    store.Read(id, "", state);
    EXPECT_EQ(state.Value, Int32(5));
    EXPECT_EQ(state.Status, OpcUa_Bad);
    EXPECT_EQ(state.Time, 77);
    store.Write(id, "", DataValue(Int32(6), 0, OpcUa_Good), 99);
    store.Read(id, "", state);
    EXPECT_EQ(state.Time, 99);
}

TEST(VariableStore, FieldsAreSeparateFromTheWhole) {
    VariableStore store;
    long long const id = store.Declare("A", OpcUaType_Double);
    VariableState state;
    store.Write(id, "x", Int32(1), 1);
    store.Write(id, "", Int32(2), 1);
    store.Read(id, "x", state);
    EXPECT_EQ(state.Value, Int32(1));
    store.Read(id, "y", state);
    EXPECT_EQ(state.Value, Null());
}

TEST(VariableStore, ManyThreadsShareIt) {
    VariableStore store;
    long long const id = store.Declare("A", OpcUaType_String);
    auto const work = [&](char const* text) {
        VariableState state;
        for (int i = 0; i < 500; ++i) {
            store.Write(id, "", Text(text), i);
            store.Read(id, "", state);
            store.Declare(text, OpcUaType_Int32);
        }
    };
    std::thread one(work, "one");
    std::thread two(work, "two");
    one.join();
    two.join();
    EXPECT_EQ(store.Declare("last", OpcUaType_Int32), 1002);
}

TEST_F(DataProvider, ValuesAreConvertedToTheTypeThatIsAskedFor) {
    provider.WriteValues({Record(variable, "", Int32(5))});
    EXPECT_EQ(Read(variable, OpcUaType_Double), OpcUa_Good);
    EXPECT_EQ(value, Double(5.0));
    EXPECT_EQ(Read(variable, OpcUaType_Null), OpcUa_Good);
    EXPECT_EQ(value, Int32(5));
}

TEST_F(DataProvider, BareValuesHaveTheCurrentTime) {
    provider.WriteValues({Record(variable, "", Int32(5))});
    EXPECT_EQ(Read(variable, {OpcUaType_DataValue, OpcUaType_Double}), OpcUa_Good);
    EXPECT_EQ(value, DataValue(Double(5.0), ScriptedNetwork::Start, OpcUa_Good));
}

TEST_F(DataProvider, DataValuesKeepQualityAndTime) {
    provider.WriteValues({Record(variable, "", DataValue(Int32(5), 42, OpcUa_Bad))});
    EXPECT_EQ(Read(variable, {OpcUaType_DataValue, OpcUaType_Int32}), OpcUa_Good);
    EXPECT_EQ(value, DataValue(Int32(5), 42, OpcUa_Bad));
    EXPECT_EQ(Read(variable, OpcUaType_Int32), OpcUa_Good);
    EXPECT_EQ(value, Int32(5));
}

TEST_F(DataProvider, AVariableWithoutAValueIsNullWithoutData) {
    EXPECT_EQ(Read(variable, {OpcUaType_DataValue, OpcUaType_Double}), OpcUa_BadNoData);
    EXPECT_EQ(value, Null());
    EXPECT_EQ(Read(variable + 1, OpcUaType_Double), OpcUa_BadNoData);
    EXPECT_EQ(value, Null());
}

TEST_F(DataProvider, ANullLeavesNullWithoutData) {
    provider.WriteValues({Record(variable, "", Int32(5))});
    provider.WriteValues({Record(variable, "", Null())});
    VariableState state;
    store->Read(variable, "", state);
    EXPECT_EQ(state.Value, Null());
    EXPECT_EQ(state.Status, OpcUa_BadNoData);
    EXPECT_EQ(Read(variable, OpcUaType_Int32), OpcUa_BadNoData);
    EXPECT_EQ(Read(variable, {OpcUaType_DataValue, OpcUaType_Int32}), OpcUa_BadNoData);
    EXPECT_EQ(value, DataValue(Null(), ScriptedNetwork::Start, OpcUa_BadNoData));
}

TEST_F(DataProvider, AFailedConversionReturnsItsReason) {
    provider.WriteValues({Record(variable, "", Text("warm"))});
    EXPECT_EQ(Read(variable, OpcUaType_Double), OpcUa_BadTypeMismatch);
    EXPECT_EQ(value, Null());
}

TEST_F(DataProvider, RecordsAreStoredInOrderAndUnknownOnesDropped) {
    provider.WriteValues(
        {Record(variable, "", Int32(1)), Record(variable + 5, "", Int32(9)), Record(variable, "", Int32(2))});
    Read(variable, OpcUaType_Int32);
    EXPECT_EQ(value, Int32(2));
    VariableState state;
    EXPECT_FALSE(store->Read(variable + 5, "", state));
}

TEST_F(DataProvider, KnowsItsOwnerAndStore) {
    EXPECT_EQ(provider.Owner(), nullptr);
    EXPECT_EQ(&provider.Store(), store.get());
}
