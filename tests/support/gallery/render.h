// Pictures of everything that there is to see.
#pragma once

#include <string>
#include <vector>

/// Opens every name in turn and writes its picture as FOLDER/VARIANT/NAME.png (a "/" in the name becomes "-"), for the
/// variants light, dark, 2x and long, which shows texts of almost double length. Each variant is drawn by a run of this
/// program of its own, with `arguments` passed on. 0, or the first exit status that is not.
int renderAll(const std::string& folder, const std::vector<std::string>& names, const std::string& pluginPath,
              const std::vector<std::string>& arguments);
/// Prints what everything lacks (see accessibility.h), each line behind its name, through a script that it leaves in
/// the folder. The exit status of the worst.
int auditAll(const std::string& folder, const std::vector<std::string>& names, std::vector<std::string> arguments);
