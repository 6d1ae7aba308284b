// The connectivity records travel to a real database: their layout is the ODBC C
// interface's, and values stored through it in SQLite (by unixODBC and the SQLite ODBC
// driver, from a connection string, no system DSN) come back exactly.
#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>

#include <cstddef>
#include <string>

#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/DateTime.h>

#include "Database.h"

namespace {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::DateTime;
using ZelvorDataType::ODBCDate;
using ZelvorDataType::ODBCDateTime;
using ZelvorDataType::ODBCTime;

// The records are handed to the driver as its own structs, so every member must sit
// where the driver reads it.
#define ZELVOR_SAME_MEMBER(ours, theirs, member)                        \
    static_assert(offsetof(ours, member) == offsetof(theirs, member) && \
                  sizeof(ours::member) == sizeof(theirs::member))
static_assert(sizeof(ODBCDate) == sizeof(SQL_DATE_STRUCT));
ZELVOR_SAME_MEMBER(ODBCDate, SQL_DATE_STRUCT, year);
ZELVOR_SAME_MEMBER(ODBCDate, SQL_DATE_STRUCT, month);
ZELVOR_SAME_MEMBER(ODBCDate, SQL_DATE_STRUCT, day);
static_assert(sizeof(ODBCTime) == sizeof(SQL_TIME_STRUCT));
ZELVOR_SAME_MEMBER(ODBCTime, SQL_TIME_STRUCT, hour);
ZELVOR_SAME_MEMBER(ODBCTime, SQL_TIME_STRUCT, minute);
ZELVOR_SAME_MEMBER(ODBCTime, SQL_TIME_STRUCT, second);
static_assert(sizeof(ODBCDateTime) == sizeof(SQL_TIMESTAMP_STRUCT));
ZELVOR_SAME_MEMBER(ODBCDateTime, SQL_TIMESTAMP_STRUCT, year);
ZELVOR_SAME_MEMBER(ODBCDateTime, SQL_TIMESTAMP_STRUCT, month);
ZELVOR_SAME_MEMBER(ODBCDateTime, SQL_TIMESTAMP_STRUCT, day);
ZELVOR_SAME_MEMBER(ODBCDateTime, SQL_TIMESTAMP_STRUCT, hour);
ZELVOR_SAME_MEMBER(ODBCDateTime, SQL_TIMESTAMP_STRUCT, minute);
ZELVOR_SAME_MEMBER(ODBCDateTime, SQL_TIMESTAMP_STRUCT, second);
ZELVOR_SAME_MEMBER(ODBCDateTime, SQL_TIMESTAMP_STRUCT, fraction);
#undef ZELVOR_SAME_MEMBER

TEST(Database, TimestampsAndDecimalsComeBackExactly) {
    // The ends of the driver's years (the record's year is 16 bits signed) and a date
    // between, each with milliseconds; decimals of 38 digits stored as text.
    const struct {
        DateTime at;
        const char* amount;
    } rows[] = {
        {DateTime(0, 1, 1, 0, 0, 0, 1), "-12345678901234567890123456.789012345678"},
        {DateTime(2024, 2, 29, 13, 45, 30, 250), "98765432109876543210.987654321098765432"},
        {DateTime(32767, 12, 31, 23, 59, 59, 999), "0.00000000000000000000000000000000000001"},
    };
    const ZelvorExamples::SqliteDatabase db(ZELVOR_SQLITE_ODBC_DRIVER);
    ASSERT_TRUE(db.Connected()) << "no connection through " << ZELVOR_SQLITE_ODBC_DRIVER;
    ASSERT_TRUE(db.Run("CREATE TABLE entries (id INTEGER, at TIMESTAMP, amount TEXT)"));
    for (SQLINTEGER id = 0; id < SQLINTEGER(std::size(rows)); ++id) {
        ODBCDateTime at = rows[id].at.ToODBCDateTime();
        const std::string amount = BigDecimal(rows[id].amount).ToString().c_str();
        SQLHSTMT s = db.Statement();
        SQLFreeStmt(s, SQL_RESET_PARAMS);
        SQLBindParameter(s, 1, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &id, 0, nullptr);
        SQLBindParameter(s, 2, SQL_PARAM_INPUT, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, 23, 3,
                         &at, 0, nullptr);
        SQLBindParameter(s, 3, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR, amount.size(), 0,
                         const_cast<char*>(amount.c_str()), 0, nullptr);
        ASSERT_TRUE(db.Run("INSERT INTO entries VALUES (?, ?, ?)")) << rows[id].amount;
    }
    ASSERT_TRUE(db.Run("SELECT id, at, amount FROM entries ORDER BY id"));
    SQLINTEGER read = 0;
    for (; SQLFetch(db.Statement()) == SQL_SUCCESS; ++read) {
        SQLINTEGER id = -1;
        ODBCDateTime at{};
        char amount[128] = {};
        SQLLEN length = 0;
        SQLGetData(db.Statement(), 1, SQL_C_SLONG, &id, 0, &length);
        ASSERT_EQ(id, read);
        ASSERT_TRUE(SQL_SUCCEEDED(
            SQLGetData(db.Statement(), 2, SQL_C_TYPE_TIMESTAMP, &at, sizeof at, &length)));
        SQLGetData(db.Statement(), 3, SQL_C_CHAR, amount, sizeof amount, &length);
        const DateTime back(at);
        EXPECT_STREQ(back.ToString().c_str(), rows[id].at.ToString().c_str());
        EXPECT_EQ(back.GetMillisecond(), rows[id].at.GetMillisecond());
        EXPECT_STREQ(amount, rows[id].amount);
        EXPECT_TRUE(BigDecimal(amount) == BigDecimal(rows[id].amount));
    }
    EXPECT_EQ(read, SQLINTEGER(std::size(rows)));
}

}  // namespace
