#pragma once

// A connection to a new SQLite database file through unixODBC, opened from a connection
// string that names the driver's shared library, so no data source needs configuring.
// The file is made in /tmp and removed, with every handle freed, when the object goes.
#include <sql.h>
#include <sqlext.h>

#include <unistd.h>
#include <cstdio>
#include <string>

namespace ZelvorExamples {

class SqliteDatabase {
  public:
    // `driver` is the path of SQLite's ODBC driver (libsqlite3odbc.so). Whether the
    // connection was made is Connected(); nothing throws.
    explicit SqliteDatabase(const std::string& driver) {
        char path[] = "/tmp/zelvor-odbc-XXXXXX";
        const int fd = mkstemp(path);
        if (fd < 0) {
            return;
        }
        close(fd);
        mPath = path;
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &mEnv);
        SQLSetEnvAttr(mEnv, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, mEnv, &mConnection);
        std::string text = "DRIVER=" + driver + ";DATABASE=" + mPath + ";";
        mConnected = SQL_SUCCEEDED(
            SQLDriverConnect(mConnection, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS,
                             nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT));
        if (mConnected) {
            SQLAllocHandle(SQL_HANDLE_STMT, mConnection, &mStatement);
        }
    }
    ~SqliteDatabase() {
        if (mStatement != SQL_NULL_HSTMT) {
            SQLFreeHandle(SQL_HANDLE_STMT, mStatement);
        }
        if (mConnected) {
            SQLDisconnect(mConnection);
        }
        if (mConnection != SQL_NULL_HDBC) {
            SQLFreeHandle(SQL_HANDLE_DBC, mConnection);
        }
        if (mEnv != SQL_NULL_HENV) {
            SQLFreeHandle(SQL_HANDLE_ENV, mEnv);
        }
        if (!mPath.empty()) {
            std::remove(mPath.c_str());
        }
    }
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;

    bool Connected() const { return mConnected; }

    // The one statement handle, for binding parameters and fetching results.
    SQLHSTMT Statement() const { return mStatement; }

    // Runs `sql` on the statement handle, after closing any open result; the parameters
    // bound to the handle stay bound. True when the driver reports success.
    bool Run(const char* sql) const {
        SQLFreeStmt(mStatement, SQL_CLOSE);
        return SQL_SUCCEEDED(
            SQLExecDirect(mStatement, reinterpret_cast<SQLCHAR*>(const_cast<char*>(sql)), SQL_NTS));
    }

  private:
    std::string mPath;
    SQLHENV mEnv = SQL_NULL_HENV;
    SQLHDBC mConnection = SQL_NULL_HDBC;
    SQLHSTMT mStatement = SQL_NULL_HSTMT;
    bool mConnected = false;
};

}  // namespace ZelvorExamples
