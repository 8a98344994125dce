// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/user_folder.h"

#include "core/fault.h"
#include "core/text.h"
#include "core/trap.h"

namespace corvid {

namespace {

constexpr const char* Application = "CORVID";
constexpr const char* Section = "Filespec";
constexpr const char* Key = "DefaultFolder";
constexpr const char* StartScript = "start.set";
constexpr const char* ProgramsFolder = "/opt/";  // where an older installation may lie
constexpr std::string_view PickPrompt = "P:More than one possible folder was found. Select the folder and press Enter";

std::string WithSlash(std::string folder) {
  if (!folder.empty() && !folder.ends_with('/') && !folder.ends_with('\\')) folder += '/';
  return folder;
}

std::string ParentOf(const std::string& folder) {
  const std::size_t slash = folder.find_last_of("/\\", folder.size() < 2 ? 0 : folder.size() - 2);
  return slash == std::string::npos ? folder : folder.substr(0, slash + 1);
}

// A ":" would end the label of a pick list's row.
std::string ListRow(const std::string& folder) {
  return "|" + Replace(folder, ":", "\\&1");
}

}  // namespace

bool UserFolder::Choose(const std::string& given) {
  options_.AppFolder = WithSlash(platform_.places.AppFolder());
  if (given.empty()) {
    if (!Find()) return false;
  } else {
    options_.UserDataFolder = WithSlash(platform_.files.Absolute(given));
  }
  return CreateDataFolder() && FillDataFolder();
}

template <typename Work>
void UserFolder::Try(Work&& work) {
  Trap trap{upcalls_.errors, Key};
  trap.Step(work);
}

bool UserFolder::Find() {
  std::string folder;
  // A store that fails is told; the default folder is found again without it.
  Try([&] { folder = WithSlash(platform_.settings.Get(Application, Section, Key)); });
  if (!folder.empty() && !platform_.files.FolderExists(folder)) {
    const std::string question =
        "The defined user data folder \"" + folder + "\" does not exist. Do you want to create the folder?";
    if (Ask(question, box::YesNo, "Warning") != box::ResultYes) {
      Try([&] { platform_.settings.Delete(Application, Section, Key); });
      Ask("Come back when you are ready to continue.", box::OkOnly, "No Corvid User Data Folder Defined");
      return false;
    }
  }
  if (folder.empty()) {
    folder = WithSlash(platform_.places.DocumentsFolder()) + "Corvid/";
    Try([&] { platform_.settings.Set(Application, Section, Key, folder); });
  }
  options_.UserDataFolder = folder;
  return true;
}

bool UserFolder::CreateDataFolder() {
  try {
    platform_.files.CreateFolder(options_.UserDataFolder);
    return true;
  } catch (const Fault& fault) {
    Ask("Error creating data folder (" + options_.UserDataFolder + "). " + fault.what(), box::OkOnly | box::Exclamation,
        "Error");
    return false;
  }
}

void UserFolder::SetFolders() {
  options_.SoundsFolder = options_.UserDataFolder + "Sounds/";
  options_.LogsFolder = options_.UserDataFolder + "logs/";
  for (const std::string& folder : {options_.SoundsFolder, options_.LogsFolder}) {
    try {
      platform_.files.CreateFolder(folder);
    } catch (const Fault& fault) {
      Ask("Error creating data folder (" + folder + "). " + fault.what(), box::OkOnly | box::Exclamation, "Error");
    }
  }
  const std::string temporary = WithSlash(platform_.places.TempFolder());
  options_.TempFolder = temporary.empty() ? options_.UserDataFolder : temporary;
  SetFolderVariables();
}

void UserFolder::SetFolderVariables() {
  script_.SystemValues[sysvar::INSTALLFOLDER] = options_.AppFolder;
  script_.SystemValues[sysvar::HOMEFOLDER] = options_.UserDataFolder;
  script_.SystemValues[sysvar::SOUNDSFOLDER] = options_.SoundsFolder;
  script_.SystemValues[sysvar::LOGSFOLDER] = options_.LogsFolder;
}

// ---- the first run ----

bool UserFolder::FillDataFolder() {
  if (platform_.files.FileExists(options_.UserDataFolder + StartScript)) return true;
  const int16 answer =
      Ask("Do you have a previous installation of Corvid from which you would like to recover scripts, sounds, MUDD "
          "login data, and settings stored on this computer?",
          box::YesNo | box::SecondDefault, "Previous Installation Data Transfer");  // most have none
  return answer == box::ResultYes ? FillFromOld() : FillFromShipped();
}

bool UserFolder::FillFromShipped() {
  return CopyAsked(options_.AppFolder, "Move Complete", "Files and folders successfully moved.");
}

bool UserFolder::FillFromOld() {
  std::string found;
  for (bool chosen = false; !chosen;) {
    const int16 known = Ask("Do you know in which folder you previously saved your Corvid data files?", box::YesNo,
                            "Moving your Corvid datafiles and Folders");
    if (known != box::ResultYes) {
      if (!SearchOldFolder(found)) return false;
      break;
    }
    chosen = PickOldFolder(found);  // a browser that was left leads back to the question
  }
  return CopyAsked(
      found, "Transfer Complete",
      "Corvid has successfully copied your Corvid data files and folders to " + options_.UserDataFolder + ".");
}

bool UserFolder::PickOldFolder(std::string& found) {
  while (!platform_.events.Ending()) {
    if (upcalls_.prompter.PickDrive("Select a drive").empty()) return false;
    std::string error;
    std::string chosen;
    upcalls_.prompter.FolderDialog2("", "*.*", 0,
                                    "Select Folder - use arrows to move through the folders, and press OK to select",
                                    error, chosen, ParentOf(options_.UserDataFolder));
    if (chosen.empty()) return false;
    if (!platform_.files.FolderExists(chosen)) chosen = ParentOf(chosen);  // a file in the folder was chosen
    chosen = WithSlash(platform_.files.Absolute(chosen));
    if (platform_.files.FileExists(chosen + StartScript)) {
      found = chosen;
      return true;
    }
    Ask("The datafiles must have a start.set file.  This is probably not a Corvid data folder.", box::OkOnly,
        "Invalid Corvid data folder");
  }
  return false;
}

bool UserFolder::SearchOldFolder(std::string& found) {
  const int16 answer =
      Ask("Corvid will now search for possible previous Corvid data folders.  Press Enter to begin search. This make "
          "take a few minutes.",
          box::OkCancel, "Search");
  if (answer == box::ResultCancel) return false;
  std::vector<std::string> folders = LocateFile(StartScript, ProgramsFolder);
  for (const std::string& folder : LocateFile(StartScript, platform_.places.HomeFolder())) folders.push_back(folder);
  std::erase(folders, options_.AppFolder);
  if (folders.empty()) {
    Ask("No previous source Folder found. ", box::OkOnly, "Search");
    return false;
  }
  found = folders[0];
  if (folders.size() == 1) return true;
  std::string list(PickPrompt);
  for (const std::string& folder : folders) list += ListRow(folder);
  found = upcalls_.prompter.PickList(list + "|Cancel");  // PUMP
  if (found.empty() || SameText(found, "CANCEL")) return false;
  return true;
}

bool UserFolder::CopyAsked(const std::string& source, const std::string& title, const std::string& done) {
  const int16 answer = Ask("now creating and transferring files to " + options_.UserDataFolder +
                               ". This may take a minute. Press OK to continue, or Cancel to exit.",
                           box::OkCancel, "Moving");
  if (answer == box::ResultCancel) return false;
  std::string error;
  MoveDataFolder(source, options_.UserDataFolder, error);
  if (!error.empty()) {
    Ask("Error while transferring initial setup scripts, sounds, and settings. " + error,
        box::OkOnly | box::Exclamation, "Error");
    return false;
  }
  Ask(done, box::OkOnly, title);
  return true;
}

int16 UserFolder::Ask(const std::string& text, int16 buttons, const std::string& title) {
  return upcalls_.prompter.MsgBox(text, buttons, title);  // PUMP
}

}  // namespace corvid
