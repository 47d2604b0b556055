#include "DocumentPart.h"
#include "RecordFixture.h"

using namespace test;
using namespace workbench;

namespace {

using RecordDocumentTest = RecordTest;

TEST_F(RecordDocumentTest, HasAllTablesAndColumns) {
    Begin();
    Database database(path, Database::Access::Read, 1000);
    Statement tables(database,
                     "SELECT name FROM sqlite_master WHERE type IN ('table', 'view') ORDER BY name");
    std::string text = "\n| Table | Columns |\n|---|---|\n";
    while (tables.Next()) {
        Statement columns(database, "SELECT name FROM pragma_table_info(?)");
        columns.Bind(1, tables.Text(0));
        std::string names;
        while (columns.Next()) {
            names += (names.empty() ? "`" : ", `") + columns.Text(0) + "`";
        }
        text += "| `" + tables.Text(0) + "` | " + names + " |\n";
    }
    ExpectInDocument(RECORD_DOCUMENT, "schema", text + "\n");
}

}  // namespace
