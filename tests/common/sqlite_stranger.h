// Another program that uses a settings file.
#pragma once

#include <filesystem>

#include <gtest/gtest.h>
#include <sqlite3.h>

class SqliteStranger {
  public:
    explicit SqliteStranger(const std::filesystem::path& file) {
        EXPECT_EQ(sqlite3_open(file.c_str(), &database_), SQLITE_OK);
    }
    SqliteStranger(const SqliteStranger&) = delete;
    SqliteStranger& operator=(const SqliteStranger&) = delete;
    ~SqliteStranger() { sqlite3_close(database_); }
    void Run(const char* words) {
        EXPECT_EQ(sqlite3_exec(database_, words, nullptr, nullptr, nullptr), SQLITE_OK) << words;
    }

  private:
    sqlite3* database_ = nullptr;
};
