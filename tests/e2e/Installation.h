#pragma once
// A fresh installation for one check: a folder of its own under the temporary folder, filled
// from the programs the build made, and removed with everything in it afterwards.

#include <initializer_list>
#include <string>

namespace e2e {

class CInstallation {
public:
    CInstallation();
    CInstallation(const CInstallation&) = delete;
    CInstallation& operator=(const CInstallation&) = delete;
    ~CInstallation();

    bool IsReady() const { return !m_folder.empty(); }
    const std::string& Folder() const { return m_folder; }
    // Path of a file or folder in the installation, e.g. Path("Profiles\\a.idprof").
    std::string Path(const std::string& relative) const;

    [[nodiscard]] bool AddProgram();    // Linkwright.exe
    [[nodiscard]] bool AddParent();     // the stand-in Zelmar.exe
    [[nodiscard]] bool AddFolder(const std::string& relative);
    // A copy of the stand-in under another name, for a game that shortcuts can start.
    [[nodiscard]] bool AddGame(const std::string& relative);
    // A profile file in Profiles, written by the profile tool, whose display name is name.
    [[nodiscard]] bool AddProfile(const std::string& fileName, const std::string& name);
    [[nodiscard]] bool WriteFile(const std::string& relative, const std::string& bytes);
    bool Exists(const std::string& relative) const;

private:
    std::string m_folder;
};

// ShortcutList bytes for these single-byte paths: each as UTF-16 units, low byte first,
// then one zero byte.
std::string ShortcutListBytes(const std::initializer_list<std::string>& paths);

// The folder where checks keep what they leave for people (pictures), made when missing.
std::string ArtifactFolder();

}  // namespace e2e
