// What the tests of the keeper share.
#include "tests/store/sqlite/Keeping.h"

#include <gtest/gtest.h>

#include <sqlite3.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace TestSupport {

Folder::Folder( Where where )
{
   const std::filesystem::path memory = "/dev/shm";
   const auto base = where == Where::memory && access( memory.c_str(), W_OK ) == 0
         ? memory
         : std::filesystem::temp_directory_path();
   std::string name = base / "keeperXXXXXX";
   if ( mkdtemp( name.data() ) == nullptr ) {
      throw std::runtime_error( name + " cannot be made" );
   }
   path_ = name;
}

Folder::~Folder()
{
   std::filesystem::remove_all( path_ );
}

std::string Folder::file( const std::string & name ) const
{
   return kept() + "/mounts/" + name + "/mount.sqlite";
}

std::vector< std::string > Folder::aside() const
{
   std::vector< std::string > all;
   for ( const auto & entry : std::filesystem::directory_iterator( kept() + "/aside" ) ) {
      all.push_back( entry.path() );
   }
   std::ranges::sort( all );
   return all;
}

std::string fileText( const std::string & path )
{
   std::ifstream in( path, std::ios::binary );
   return { std::istreambuf_iterator< char >( in ), {} };
}

void writeFile( const std::string & path, std::string_view text )
{
   std::ofstream out( path, std::ios::binary );
   out.write( text.data(), static_cast< std::streamsize >( text.size() ) );
}

void runIn( const std::string & database, const std::string & statements )
{
   sqlite3 * connection = nullptr;
   ASSERT_EQ( sqlite3_open( database.c_str(), &connection ), SQLITE_OK );
   EXPECT_EQ( sqlite3_exec( connection, statements.c_str(), nullptr, nullptr, nullptr ), SQLITE_OK )
         << sqlite3_errmsg( connection );
   sqlite3_close( connection );
}

Keeper::Bytes bytesOf( std::string_view text )
{
   const auto * const from = reinterpret_cast< const std::byte * >( text.data() );
   return { from, from + text.size() };
}

Batches texts( std::initializer_list< std::string_view > all )
{
   Batches batches;
   for ( const std::string_view one : all ) {
      batches.push_back( bytesOf( one ) );
   }
   return batches;
}

Keeper::Bytes batchOf( std::uint64_t number, std::size_t size )
{
   std::minstd_rand random( static_cast< std::minstd_rand::result_type >( number ) );
   Keeper::Bytes bytes( size );
   for ( std::byte & one : bytes ) {
      one = static_cast< std::byte >( random() >> 8 & 0xff );
   }
   return bytes;
}

Keeper::Request requestOf( const std::string & path, std::uint64_t number, bool whole,
      std::size_t size )
{
   return { path, "Test::Root", "writer " + std::to_string( number ), number, whole,
      std::make_shared< const Keeper::Bytes >( batchOf( number, size ) ) };
}

Keeping::Keeping( const std::string & folder, Vok::Store::Detail::Disk & disk )
      : keeper(
              folder,
              { Vok::Store::PathPattern( "*" ), Vok::Store::PathPattern( "*/*" ),
                    Vok::Store::PathPattern( "*/*/*" ) },
              [ this ] {
                 const std::lock_guard lock( mutex_ );
                 awake_ = true;
                 woken_.notify_one();
              },
              disk )
{
}

std::string Keeping::keep( const std::string & path, bool whole, std::string_view text )
{
   return keep( { path, "Test::Root", "writer", 1, whole,
         std::make_shared< const Keeper::Bytes >( bytesOf( text ) ) } );
}

std::string Keeping::keep( const Keeper::Request & request )
{
   keeper.keep( request );
   const auto results = next();
   if ( results.size() != 1 || results[ 0 ].path != request.path ||
         results[ 0 ].number != request.number ) {
      throw std::logic_error( "not the result that was expected" );
   }
   return results[ 0 ].problem;
}

std::vector< Keeper::Result > Keeping::next()
{
   while ( true ) {
      if ( auto results = keeper.results(); !results.empty() ) {
         return results;
      }
      std::unique_lock lock( mutex_ );
      if ( !woken_.wait_for( lock, std::chrono::minutes( 2 ), [ this ] { return awake_; } ) ) {
         throw std::runtime_error( "no result comes" );
      }
      awake_ = false;
   }
}

std::map< std::string, Keeper::Kept > Keeping::load()
{
   std::map< std::string, Keeper::Kept > all;
   for ( auto & one : keeper.load() ) {
      const std::string path = one.path;
      if ( !all.emplace( path, std::move( one ) ).second ) {
         throw std::runtime_error( path + " was loaded twice" );
      }
   }
   return all;
}

void History::asked( const Keeper::Request & request )
{
   Path & path = paths_[ request.path ];
   State state{ request.type, request.writer, {} };
   if ( !request.whole ) {
      state.batches = path.last.value().batches;
   }
   state.batches.push_back( *request.batch );
   path.last = state;
   path.possible.push_back( std::move( state ) );
   path.needsWhole = false;
   requests_[ request.path ] = lastAsked_ = request.number;
}

void History::removing( const std::string & name )
{
   Path & path = paths_[ name ];
   path.last = std::nullopt;
   path.possible.push_back( std::nullopt );
   path.needsWhole = true;
   path.removing = lastAsked_;
}

// What is asked is done in order: the result of a request that was asked later tells that what was
// to be removed is gone, unless a problem was told before.
void History::told( const Keeper::Result & result )
{
   if ( result.number == 0 ) {
      paths_[ result.path ].removing.reset();
      return;
   }
   for ( auto & [ name, path ] : paths_ ) {
      if ( path.removing && *path.removing < result.number ) {
         path.removing.reset();
         if ( !busy( name ) ) {
            path.possible = { std::nullopt };
         }
      }
   }
   requests_.erase( result.path );
   Path & path = paths_[ result.path ];
   if ( result.problem.empty() ) {
      path.possible = { path.last };
   } else {
      path.needsWhole = true;
   }
}

std::string History::found( const std::map< std::string, Keeper::Kept > & kept )
{
   requests_.clear();
   for ( const auto & [ name, one ] : kept ) {
      if ( !paths_.contains( name ) ) {
         return name + " was never kept";
      }
   }
   for ( auto & [ name, path ] : paths_ ) {
      MaybeState state;
      if ( const auto at = kept.find( name ); at != kept.end() ) {
         state = { at->second.type, at->second.writer, at->second.batches };
      }
      if ( std::ranges::find( path.possible, state ) == path.possible.end() ) {
         return name + " has " + ( state ? std::to_string( state->batches.size() ) : "no" ) +
               " batches, written by " + ( state ? state->writer : "nobody" ) +
               ", which is none of " + std::to_string( path.possible.size() ) +
               " states that it may have; the last has " +
               ( path.last ? std::to_string( path.last->batches.size() ) : "no" ) + " by " +
               ( path.last ? path.last->writer : "nobody" );
      }
      path = { state, { state }, true, std::nullopt };
   }
   return "";
}

std::optional< RandomAsker::Step > RandomAsker::next( History & history )
{
   const char * const paths[] = { "a", "config/b", "config/b/c" };
   const std::string path = paths[ random_() % 3 ];
   if ( history.busy( path ) ) {
      return std::nullopt;
   }
   if ( random_() % 16 == 0 ) {
      history.removing( path );
      return Step{ path, std::nullopt };
   }
   const std::size_t sizes[] = { 0, 100, 5000, 60000, std::size_t{ 3 } << 19 };
   // The largest ones seldom.
   const std::size_t size = sizes[ random_() % 32 == 0 ? 4 : random_() % 4 ];
   const bool whole = history.needsWhole( path ) || random_() % 8 == 0;
   Step step{ path, requestOf( path, ++number_, whole, size ) };
   history.asked( *step.request );
   return step;
}

} // namespace TestSupport
