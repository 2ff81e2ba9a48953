// Texts that tests expect, kept in files beside them.
#pragma once

#include <filesystem>
#include <string>

namespace VokGenTest {

/// The folder of the tests of vokgen in the source tree.
std::filesystem::path testFolder();

std::string readFile( const std::filesystem::path & path );

/// Fails the running test where `actual` is not what the file holds, showing the first lines that
/// differ and the command that accepts the new text. Run with VOKGEN_ACCEPT=1 in the environment,
/// it writes the file instead: only people do that, after reading what changed.
void expectText( const std::filesystem::path & file, const std::string & actual );

/// Another working folder for as long as it lives, so that paths in messages are short.
class WorkingFolder {
 public:
   explicit WorkingFolder( const std::filesystem::path & folder );
   ~WorkingFolder();
   WorkingFolder( const WorkingFolder & ) = delete;
   WorkingFolder & operator=( const WorkingFolder & ) = delete;

 private:
   std::filesystem::path before_;
};

/// An empty folder, deleted with all that is in it at the end.
class TemporaryFolder {
 public:
   TemporaryFolder();
   ~TemporaryFolder();
   TemporaryFolder( const TemporaryFolder & ) = delete;
   TemporaryFolder & operator=( const TemporaryFolder & ) = delete;

   const std::filesystem::path & path() const { return path_; }
   /// Writes a file into it, with the folders on the way.
   void write( const std::string & name, const std::string & text ) const;

 private:
   std::filesystem::path path_;
};

} // namespace VokGenTest
