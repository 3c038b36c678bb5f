#include "files/settings.h"

#include "files/file_information.h"
#include "store/storage.h"
#include "views/display_flags.h"
#include "views/scene_views.h"

std::int32_t CurrentObjectNumber = -1;

namespace {

const FileSetting Settings[] = {
    {SettingCurrentObject, &CurrentObjectNumber, nullptr},
    {SettingSceneGridIndex, &SceneGridIndex, nullptr},
    {SettingSceneGridSteps, &SceneGridSteps, nullptr},
    {SettingNoViewports, &NoViewports, nullptr},
    {SettingHideSubObjects, &HideSubObjects, nullptr},
    {SettingHideScene, &HideScene, nullptr},
    {SettingCreateId, &FileCreateId, nullptr},
    {SettingPublicDomain, &FilePublicDomain, nullptr},
    {SettingTitle, nullptr, FileTitle},
    {SettingAuthor, nullptr, FileAuthor},
    {SettingCompany, nullptr, FileCompany},
    {SettingContact, nullptr, FileContact},
    {SettingComment1, nullptr, FileComment1},
    {SettingComment2, nullptr, FileComment2},
    {SettingComment3, nullptr, FileComment3},
    {SettingComment4, nullptr, FileComment4},
    {SettingObjectIsolated, &ObjectIsolated, nullptr},
};

} // namespace

std::span<const FileSetting> FileSettings() {
    return Settings;
}

const FileSetting* FindFileSetting(int number) {
    for (const FileSetting& setting : Settings)
        if (setting.Number == number)
            return &setting;
    return nullptr;
}
