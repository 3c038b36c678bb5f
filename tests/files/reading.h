#pragma once

#include "files/file_errors.h"
#include "files/file_information.h"
#include "files/file_slots.h"
#include "files/reader.h"
#include "model_bytes.h"
#include "store/accessors.h"
#include "store/records.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/scene_views.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Starts every test with an empty store, and keeps what the user would be told.
class FilesTest : public testing::Test {
  protected:
    FilesTest() {
        Told.clear();
        Asked.clear();
        TheFileSlots = {};
        TheFileSlots.TellUser = [](const char* text) { Told.emplace_back(text); };
        TheFileSlots.AskOkCancel = [](const char* text, void (*)(int)) { Asked.emplace_back(text); };
        TheStorageSlots = {};
        TheStorageSlots.ResetFileInformation = ResetFileInformation;
        PointToMerge(0);
        DevalidateSceneViews();
        ResetStorage();
        FileErrorOk = 0;
    }

    ~FilesTest() override {
        PointToMerge(1);
        ResetStorage();
        PointToMerge(0);
        ResetStorage();
        TheFileSlots = {};
        TheStorageSlots = {};
    }

    static std::vector<std::string> Told, Asked;
};

inline std::vector<std::string> FilesTest::Told, FilesTest::Asked;

/// What the last ReadQuietly wrote on the standard error stream.
inline std::string Warned;

/// Reads a model; what that writes on the standard streams is caught.
inline int ReadQuietly(const std::string& bytes) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int good = ReadKirvoFromMemory(bytes.data(), bytes.size());
    testing::internal::GetCapturedStdout();
    Warned = testing::internal::GetCapturedStderr();
    return good;
}

inline int ReadQuietly(const ModelBytes& bytes) {
    return ReadQuietly(bytes.Bytes());
}

/// The error number of a read that must fail; -2 when it does not.
inline int ErrorOf(const ModelBytes& bytes) {
    return ReadQuietly(bytes) ? -2 : FileErrorNumber;
}

/// Sub-objects of the current object, by name; null when there is none.
inline SubObject* SubObjectNamed(std::string_view name) {
    for (SubObject* subObject : EverySubObject(CurrentObject()))
        if (subObject->Name == name)
            return subObject;
    return nullptr;
}

/// A list's records in order.
template <auto Link>
std::vector<LinkRecord<Link>*> ListOf(LinkRecord<Link>* first) {
    std::vector<LinkRecord<Link>*> records;
    for (auto* record : Along<Link>(first))
        records.push_back(record);
    return records;
}
