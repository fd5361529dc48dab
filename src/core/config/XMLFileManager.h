// Named XML documents that lie in files: the base of both kinds of profiles.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/services/Translation.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

/// Name of the snapshot that a rig's creation takes. Lives in memory alone and can't be changed.
inline constexpr const char* kFactorySettings = "Factory Settings";
/// Name of the profile that a new instance loads.
inline constexpr const char* kStartProfile = "Start Profile";

/// The answer to a request without a profile.
inline constexpr const char* kSelectProfile = Translatable("Please select or specify a profile");

/// How a request on profiles ended, with the text for the user.
struct ProfileResult {
  enum class Answer {
    kDone,
    kRefused,  ///< nothing has changed; `message` says why
    kAsk,      ///< nothing has changed; `message` is a question, and a yes repeats the request
  };

  Answer answer = Answer::kDone;
  std::string message;             ///< may be empty when done
  std::vector<std::string> names;  ///< profiles that were written

  bool Done() const { return answer == Answer::kDone; }
};

/// Profiles of one kind and one tool, by name. They come from the resources (read-only) and from
/// the user's folder; of two with one name the user's own wins, and a file of its own wins over
/// the collective file. Deleting the user's brings the other one back. A resource can't be saved
/// over, with the exception of "Start Profile", which is always the user's to choose.
/// Requests give texts and never show them; why a file failed goes to the log.
class XMLFileManager {
 public:
  enum class Origin {
    kMemory,          ///< never written
    kFactory,         ///< from the resources, read-only
    kCollectiveFile,  ///< from the user's collective file, which is only read
    kUser,            ///< a file of the user's own
  };

  struct Profile {
    util::xml::Tag document{std::string()};
    Origin origin = Origin::kUser;
    std::string path;  ///< file of a user's own profile; empty while it has none
    bool unsaved = false;
  };

  /// Turns a document of any known form into profiles of the present one. False when the root is
  /// not known. `fallbackName` names a profile whose document does not.
  using Parser = bool (*)(const util::xml::Element& root, const std::string& fallbackName,
                          std::vector<util::xml::Tag>& profiles);

  XMLFileManager(Parser parser, std::string factoryFolder, std::string userFolder);
  XMLFileManager(const XMLFileManager&) = delete;
  XMLFileManager& operator=(const XMLFileManager&) = delete;

  /// Reads the profiles of a tool's folder: the collective file, then one file per profile. What is
  /// damaged is left out with a line in the log. False when there was nothing to read.
  virtual bool Load(const std::string& path);
  /// Writes the user's profiles that are not saved yet into a tool's folder, which is made when it
  /// is missing. False when one could not be written; it stays unsaved.
  virtual bool Save(const std::string& path);
  /// Name of the collective file, and with an "s" of the folder of the others.
  virtual std::string GetRootName() const = 0;
  /// Extension of a profile's file, without the full stop.
  virtual std::string GetFileExtension() const = 0;
  virtual ~XMLFileManager();

  /// Reads all files again; profiles in memory stay.
  void Reload();
  /// All names, in the order of their bytes.
  std::vector<std::string> GetNames() const;
  /// Null when there is no such profile.
  const util::xml::Tag* Find(const std::string& name) const;
  /// Whether the profile can't be saved over.
  bool IsReadOnly(const std::string& name) const;
  /// Whether the profile can be neither renamed nor deleted: no file of the user's is behind it.
  bool IsFixed(const std::string& name) const;

  ProfileResult Rename(const std::string& name, const std::string& newName);
  /// Asks first unless `confirmed`.
  ProfileResult Delete(const std::string& name, bool confirmed);
  /// Writes a copy to any path.
  ProfileResult Export(const std::string& name, const std::string& path) const;
  /// Saving and exporting are refused while the gate says false.
  void SetWriteGate(std::function<bool()> gate) { m_mayWrite = std::move(gate); }
  /// Called when the list, or what a name stands for, has changed.
  void SetChangeHandler(std::function<void()> handler) { m_changed = std::move(handler); }

 protected:
  /// Puts a document under a name and saves it. Asks before it overwrites, unless `overwrite`.
  ProfileResult Store(const std::string& name, util::xml::Tag document, bool overwrite);
  /// Reads a file from anywhere and stores what it holds: all of it or, when one profile is
  /// refused, nothing. `prepare` sees each document before it is stored.
  ProfileResult ImportFile(const std::string& path, bool overwrite,
                           const std::function<void(util::xml::Tag&)>& prepare);
  void PutInMemory(const std::string& name, util::xml::Tag document);
  bool IsInMemory(const std::string& name) const;

 private:
  using Profiles = std::map<std::string, Profile>;

  bool LoadFile(const std::string& path, Origin origin);
  std::string ParseFile(const std::string& path, std::vector<util::xml::Tag>& profiles) const;
  std::string FreePath(const std::string& folder, const std::string& name) const;
  bool IsFixed(const std::string& name, const Profile& profile) const;
  ProfileResult CheckTarget(const std::string& name, bool overwrite) const;
  void Put(const std::string& name, util::xml::Tag document);
  bool MayWrite() const { return !m_mayWrite || m_mayWrite(); }
  void TellChange() const {
    if (m_changed) m_changed();
  }

  Parser m_parser;
  std::string m_factoryFolder;
  std::string m_userFolder;
  std::function<bool()> m_mayWrite;
  std::function<void()> m_changed;
  Profiles m_profiles;
};

}  // namespace orv::rws::core
