// Collections of entities that change while they are iterated, and the memory that they give back.
#include "tests/model/Everything.h"
#include "tests/support/HeapMeter.h"
#include "tests/support/Recorder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Colour;
using ::Test::Label;
using ::Test::Level;
using ::Test::Narrow;
using ::Test::Pair;
using ::Test::Root;

constexpr std::uint32_t members = 600;

Pair pair( std::uint32_t id )
{
   return Pair( id, "text", Colour::red, Level(), false, Vok::Seconds() );
}

std::string nameOf( std::uint32_t i ) { return "member " + std::to_string( i ); }

// One collection of a Root, as a set of numbers.
struct Subject {
   const char * name;
   void ( *insert )( Root &, std::uint32_t );
   void ( *erase )( Root &, std::uint32_t );
   void ( *each )( Root &, const std::function< void( std::uint32_t ) > & );
   std::size_t ( *size )( const Root & );
   void ( *eraseAll )( Root & );
};

std::uint32_t numberOf( const Corvo::String & name )
{
   return static_cast< std::uint32_t >( std::stoul( std::string( name ).substr( 7 ) ) );
}

using See = const std::function< void( std::uint32_t ) > &;

std::uint32_t numberOfSlot( const ::Test::Slot & slot ) { return numberOf( slot.name() ); }

const Subject subjects[] = {
   { "names", []( Root & r, std::uint32_t i ) { r.namesIs( i, nameOf( i ) ); },
         []( Root & r, std::uint32_t i ) { r.namesDel( i ); },
         []( Root & r, See see ) {
            for ( const auto & [ key, value ] : r.names() ) {
               see( key );
            }
         },
         []( const Root & r ) { return r.names().size(); }, []( Root & r ) { r.namesDelAll(); } },
   { "byName", []( Root & r, std::uint32_t i ) { r.byNameIs( nameOf( i ), pair( i ) ); },
         []( Root & r, std::uint32_t i ) { r.byNameDel( nameOf( i ) ); },
         []( Root & r, See see ) {
            for ( const auto & [ key, value ] : r.byName() ) {
               see( value.id() );
            }
         },
         []( const Root & r ) { return r.byName().size(); }, []( Root & r ) { r.byNameDelAll(); } },
   { "sorted", []( Root & r, std::uint32_t i ) { r.sortedIs( pair( i ) ); },
         []( Root & r, std::uint32_t i ) { r.sortedDel( i ); },
         []( Root & r, See see ) {
            for ( const auto & [ key, value ] : r.sorted() ) {
               see( key );
            }
         },
         []( const Root & r ) { return r.sorted().size(); }, []( Root & r ) { r.sortedDelAll(); } },
   { "words", []( Root & r, std::uint32_t i ) { r.wordsIs( nameOf( i ) ); },
         []( Root & r, std::uint32_t i ) { r.wordsDel( nameOf( i ) ); },
         []( Root & r, See see ) {
            for ( const Corvo::String & word : r.words() ) {
               see( numberOf( word ) );
            }
         },
         []( const Root & r ) { return r.words().size(); }, []( Root & r ) { r.wordsDelAll(); } },
   { "marks", []( Root & r, std::uint32_t i ) { r.marksIs( i ); },
         []( Root & r, std::uint32_t i ) { r.marksDel( i ); },
         []( Root & r, See see ) {
            for ( const std::uint32_t mark : r.marks() ) {
               see( mark );
            }
         },
         []( const Root & r ) { return r.marks().size(); }, []( Root & r ) { r.marksDelAll(); } },
   { "tree", []( Root & r, std::uint32_t i ) { r.treeIs( nameOf( i ) ); },
         []( Root & r, std::uint32_t i ) { r.treeDel( nameOf( i ) ); },
         []( Root & r, See see ) {
            for ( const auto & child : r.tree() ) {
               see( numberOf( child->name() ) );
            }
         },
         []( const Root & r ) { return r.tree().size(); }, []( Root & r ) { r.treeDelAll(); } },
   { "groups", []( Root & r, std::uint32_t i ) { r.groupsIs( "g", i ); },
         []( Root & r, std::uint32_t i ) { r.groupsDel( i ); },
         []( Root & r, See see ) {
            for ( const auto & child : r.groups() ) {
               see( child->seqno() );
            }
         },
         []( const Root & r ) { return r.groups().size(); }, []( Root & r ) { r.groupsDelAll(); } },
   { "slots", []( Root & r, std::uint32_t i ) { r.slotsIs( Label( nameOf( i ) ), 1 ); },
         []( Root & r, std::uint32_t i ) { r.slotsDel( Label( nameOf( i ) ) ); },
         []( Root & r, See see ) {
            for ( const auto & child : r.slots() ) {
               see( numberOfSlot( *child ) );
            }
         },
         []( const Root & r ) { return r.slots().size(); }, []( Root & r ) { r.slotsDelAll(); } },
   { "refs",
         []( Root & r, std::uint32_t i ) {
            r.refsIs( ::Test::Numbered::NumberedIs( Narrow( 256 + i ) ) );
         },
         []( Root & r, std::uint32_t i ) { r.refsDel( Narrow( 256 + i ) ); },
         []( Root & r, See see ) {
            for ( const auto & target : r.refs() ) {
               see( target->id().value() - 256U );
            }
         },
         []( const Root & r ) { return r.refs().size(); }, []( Root & r ) { r.refsDelAll(); } },
};

class EntityIterationTest : public testing::TestWithParam< Subject > {
 protected:
   Ptr< Root > root_ = Root::RootIs( "r" );

   void SetUp() override
   {
      for ( std::uint32_t i = 0; i != members; ++i ) {
         GetParam().insert( *root_, i );
      }
   }
};

TEST_P( EntityIterationTest, theMemberThatIsSeenMayGo )
{
   std::map< std::uint32_t, int > seen;
   GetParam().each( *root_, [ & ]( std::uint32_t i ) {
      ++seen[ i ];
      GetParam().erase( *root_, i );
   } );
   EXPECT_EQ( seen.size(), members );
   for ( const auto & [ member, times ] : seen ) {
      EXPECT_EQ( times, 1 ) << member;
   }
   EXPECT_EQ( GetParam().size( *root_ ), 0U );
}

TEST_P( EntityIterationTest, whatStaysIsSeenOnceWhatIsDeletedNotAgainWhatIsInsertedAtMostOnce )
{
   std::map< std::uint32_t, int > seen;
   std::map< std::uint32_t, int > deletedUnseen;
   std::uint32_t next = members;
   GetParam().each( *root_, [ & ]( std::uint32_t i ) {
      ++seen[ i ];
      if ( i < members && i % 3 == 1 ) { // those beside go, this one stays
         for ( const std::uint32_t gone : { i - 1, i + 1 } ) {
            GetParam().erase( *root_, gone );
            deletedUnseen[ gone ] = seen[ gone ];
         }
      }
      if ( i < members && i % 4 == 0 ) {
         GetParam().insert( *root_, next++ );
      }
   } );
   for ( std::uint32_t i = 1; i < members; i += 3 ) {
      EXPECT_EQ( seen[ i ], 1 ) << i;
   }
   for ( const auto & [ member, times ] : deletedUnseen ) {
      EXPECT_EQ( seen[ member ], times ) << member;
   }
   for ( const auto & [ member, times ] : seen ) {
      EXPECT_LE( times, 1 ) << member;
   }
   EXPECT_GT( next, members );
}

TEST_P( EntityIterationTest, allMayGoMeanwhile )
{
   int seen = 0;
   GetParam().each( *root_, [ & ]( std::uint32_t ) {
      ++seen;
      GetParam().eraseAll( *root_ );
   } );
   EXPECT_EQ( seen, 1 );
}

TEST_P( EntityIterationTest, deletingAllGivesTheMemoryBack )
{
   const Ptr< Root > other = Root::RootIs( "other" );
   const auto fillAndEmpty = [ & ] {
      for ( std::uint32_t i = 0; i != members; ++i ) {
         GetParam().insert( *other, i );
      }
      GetParam().eraseAll( *other );
   };
   fillAndEmpty(); // from here on a slab of entities is kept for the next ones
   const TestSupport::HeapMeter heap;
   fillAndEmpty();
   EXPECT_GT( heap.peak(), members );
   EXPECT_EQ( heap.held(), 0U );
   EXPECT_EQ( GetParam().size( *other ), 0U );
}

TEST_P( EntityIterationTest, deletingAllTellsOncePerMember )
{
   TestSupport::Recorder recorder( *root_ );
   GetParam().eraseAll( *root_ );
   EXPECT_EQ( recorder.take().size(), members );
   EXPECT_EQ( GetParam().size( *root_ ), 0U );
   GetParam().eraseAll( *root_ );
   EXPECT_EQ( recorder.take().size(), 0U );
}

INSTANTIATE_TEST_SUITE_P( Collections, EntityIterationTest, testing::ValuesIn( subjects ),
      []( const auto & subject ) { return subject.param.name; } );

} // namespace
