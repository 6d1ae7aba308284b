// Dates and amounts in a real database: a ledger of three entries goes into a new SQLite
// file through unixODBC, as timestamps with milliseconds and 38-digit decimals kept as
// text, and comes back exactly. Usage: database [path of SQLite's ODBC driver]
#include <cstdio>
#include <string>

#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/DateTime.h>

#include "Database.h"

using ZelvorDataType::BigDecimal;
using ZelvorDataType::DateTime;
using ZelvorDataType::ODBCDateTime;

namespace {

struct Entry {
    DateTime at;
    const char* amount;
};

bool Store(const ZelvorExamples::SqliteDatabase& db, SQLINTEGER id, const Entry& entry) {
    SQLHSTMT s = db.Statement();
    SQLFreeStmt(s, SQL_RESET_PARAMS);
    // [readme]
    ODBCDateTime at = entry.at.ToODBCDateTime();  // laid out as SQL_TIMESTAMP_STRUCT
    const std::string amount = BigDecimal(entry.amount).ToString().c_str();  // every digit
    // 23 characters with 3 digits of fraction: the driver keeps the milliseconds.
    SQLBindParameter(s, 2, SQL_PARAM_INPUT, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3, &at, 0,
                     nullptr);
    SQLBindParameter(s, 3, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, amount.size(), 0,
                     const_cast<char*>(amount.c_str()), 0, nullptr);
    // [/readme]
    SQLBindParameter(s, 1, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &id, 0, nullptr);
    return db.Run("INSERT INTO ledger VALUES (?, ?, ?)");
}

}  // namespace

int main(int argc, char** argv) {
    const std::string driver = argc > 1 ? argv[1] : ZELVOR_SQLITE_ODBC_DRIVER;
    const Entry entries[] = {
        {DateTime(0, 1, 1, 0, 0, 0, 1), "-12345678901234567890123456.789012345678"},
        {DateTime(2024, 2, 29, 13, 45, 30, 250), "98765432109876543210.987654321098765432"},
        {DateTime(32767, 12, 31, 23, 59, 59, 999), "0.00000000000000000000000000000000000001"},
    };
    const ZelvorExamples::SqliteDatabase db(driver);
    if (!db.Connected() || !db.Run("CREATE TABLE ledger (id INTEGER, at TIMESTAMP, amount TEXT)")) {
        std::fprintf(stderr, "no database through %s\n", driver.c_str());
        return 1;
    }
    for (SQLINTEGER id = 0; id < SQLINTEGER(std::size(entries)); ++id) {
        if (!Store(db, id, entries[id])) {
            std::fprintf(stderr, "could not store entry %d\n", int(id));
            return 1;
        }
    }

    int same = 0;
    db.Run("SELECT id, at, amount FROM ledger ORDER BY id");
    for (SQLINTEGER id = 0; SQLFetch(db.Statement()) == SQL_SUCCESS && id < 3; ++id) {
        ODBCDateTime record{};
        char amount[128] = {};
        SQLLEN length = 0;
        SQLGetData(db.Statement(), 2, SQL_C_TYPE_TIMESTAMP, &record, sizeof record, &length);
        SQLGetData(db.Statement(), 3, SQL_C_CHAR, amount, sizeof amount, &length);
        const DateTime at(record);
        const bool exact =
            at == entries[id].at && BigDecimal(amount) == BigDecimal(entries[id].amount);
        same += exact;
        std::printf("%-25s %42s%s\n", at.ToString().c_str(), amount, exact ? "" : "  (changed)");
    }
    std::printf("%d of %zu entries came back exactly\n", same, std::size(entries));
    return same == int(std::size(entries)) ? 0 : 1;
}
