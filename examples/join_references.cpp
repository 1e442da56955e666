// join_references: owners and references, saved apart and loaded in either order, find each other.
#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/uniqueid.h>

#include <cstdio>

template <class Identity>
void save(CMemFile& file, Identity (&identities)[3]) {
    CArchive archive(&file, CArchive::store);
    for (Identity& identity : identities) identity.Serialize(archive);
    archive.Close();
}

template <class Identity>
void load(CMemFile& file, Identity (&identities)[3]) {
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::load);
    for (Identity& identity : identities) identity.Serialize(archive);
}

void load_and_show(CMemFile& tools, CMemFile& users, bool tools_first) {
    nmkObjectId loaded_tools[3];
    nmkRefToObjectId loaded_users[3];
    if (tools_first) load(tools, loaded_tools);
    load(users, loaded_users);
    if (!tools_first) load(tools, loaded_tools);
    std::printf("%s:", tools_first ? "owners first" : "references first");
    for (int user = 0; user < 3; ++user) {
        for (int tool = 0; tool < 3; ++tool) {
            if (loaded_tools[tool].is_target_of(loaded_users[user]) == 0) continue;
            std::printf("  user %d -> tool %d", user, tool);
        }
    }
    std::printf("\n");
    nmkUniqueIdTable::delete_session_entities();
}

int main() {
    CMemFile tool_file, user_file;
    {
        nmkObjectId tools[3];
        nmkRefToObjectId users[3] = {tools[2].create_reference(), tools[0].create_reference(),
                                     tools[2].create_reference()};
        save(tool_file, tools);
        save(user_file, users);
    }
    load_and_show(tool_file, user_file, true);
    load_and_show(tool_file, user_file, false);
}
