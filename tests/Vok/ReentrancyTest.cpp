// What a notifiee may do from inside a notification: every sequence of three steps, by each of
// three notifiees, told by a parent and by its child, beside a plain model of the rules.
#include "tests/model/Everything.h"

#include "Vok/Vok.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Corvo::Ptr;
using ::Test::Tree;

enum class Step {
   attach,
   detach,
   destroy,
   set,
   setBack,
   deleteKey,
   deleteChild,
   drop,
   fail
};
constexpr std::size_t steps = 9;
using Script = std::array< Step, 3 >;

enum Who : std::size_t {
   parent,
   child
};

constexpr const char * told[] = { "parent", "child" };

struct Refusal : std::runtime_error {
   Refusal() : std::runtime_error( "a notifiee throws" ) {}
};

/// What the actor does when it is told for the first time; `here` is where that is.
template< class World >
void act( World & world, const Script & script, std::size_t actor, Who here )
{
   const std::size_t next = ( actor + 1 ) % 3;
   const std::size_t other = ( actor + 2 ) % 3;
   for ( const Step step : script ) {
      switch ( step ) {
      case Step::attach:
         world.attach( other, parent );
         world.attach( other, child );
         break;
      case Step::detach:
         world.detach( other, here );
         break;
      case Step::destroy:
         world.destroy( next );
         break;
      case Step::set:
         world.set( here, 7 );
         break;
      case Step::setBack:
         world.set( here, 0 );
         break;
      case Step::deleteKey:
         world.deleteKey( "key" );
         break;
      case Step::deleteChild:
         world.deleteKey( "child" );
         break;
      case Step::drop:
         world.drop();
         break;
      case Step::fail:
         throw Refusal();
      }
   }
}

/// The rules in their simplest form: attachments have numbers, a notification reaches those that
/// were there when it began and still are.
class Model {
 public:
   Model( const Script & script, std::size_t actor, Who trigger )
         : script_( script ),
           actor_( actor )
   {
      for ( std::size_t notifiee = 0; notifiee != 3; ++notifiee ) {
         attach( notifiee, trigger );
      }
      attach( actor, trigger == parent ? child : parent );
   }

   void attach( std::size_t notifiee, Who who )
   {
      if ( destroyed_[ notifiee ] || !reachable( who ) ) {
         return;
      }
      auto & list = entities_[ who ].attached;
      if ( std::none_of( list.begin(), list.end(),
                 [ & ]( const Attachment & a ) { return a.notifiee == notifiee; } ) ) {
         list.push_back( { notifiee, ++number_ } );
      }
   }

   void detach( std::size_t notifiee, Who who )
   {
      if ( reachable( who ) ) {
         std::erase_if( entities_[ who ].attached,
               [ & ]( const Attachment & a ) { return a.notifiee == notifiee; } );
      }
   }

   void destroy( std::size_t notifiee )
   {
      for ( Entity & entity : entities_ ) {
         std::erase_if( entity.attached,
               [ & ]( const Attachment & a ) { return a.notifiee == notifiee; } );
      }
      destroyed_[ notifiee ] = true;
   }

   void set( Who who, std::uint32_t depth )
   {
      if ( reachable( who ) && entities_[ who ].depth != depth ) {
         entities_[ who ].depth = depth;
         tell( who, "depth" );
      }
   }

   void deleteKey( const std::string & key )
   {
      bool & there = key == "child" ? hasChild_ : hasKey_;
      if ( reachable( parent ) && there ) {
         there = false;
         tell( parent, key );
      }
   }

   void drop() { dropped_ = true; }

   std::vector< std::string > heard;

 private:
   struct Attachment {
      std::size_t notifiee;
      std::size_t number;
   };

   struct Entity {
      std::uint32_t depth = 0;
      std::size_t notifying = 0;
      std::vector< Attachment > attached;
   };

   // Whether the test still has a way to it: the parent by its reference, the child by its parent
   // or while it notifies.
   bool reachable( Who who ) const
   {
      return who == parent ? !dropped_
                           : entities_[ child ].notifying != 0 || ( !dropped_ && hasChild_ );
   }

   void tell( Who who, const std::string & what )
   {
      Entity & entity = entities_[ who ];
      const std::size_t last = number_;
      bool failed = false;
      ++entity.notifying;
      for ( std::size_t number = 1; number <= last; ++number ) {
         const auto at = std::find_if( entity.attached.begin(), entity.attached.end(),
               [ & ]( const Attachment & a ) { return a.number == number; } );
         if ( at == entity.attached.end() ) {
            continue;
         }
         const std::size_t notifiee = at->notifiee;
         heard.push_back( std::to_string( notifiee ) + ' ' + told[ who ] + ' ' + what );
         if ( notifiee == actor_ && !acted_ ) {
            acted_ = true;
            try {
               act( *this, script_, actor_, who );
            } catch ( const Refusal & ) {
               failed = true;
            }
         }
      }
      --entity.notifying;
      if ( failed ) {
         throw Refusal();
      }
   }

   Script script_;
   std::size_t actor_;
   bool acted_ = false;
   bool dropped_ = false;
   bool hasChild_ = true;
   bool hasKey_ = true;
   std::size_t number_ = 0;
   std::array< bool, 3 > destroyed_{};
   std::array< Entity, 2 > entities_;
};

/// The same with entities and notifiees.
class Real {
 public:
   Real( const Script & script, std::size_t actor, Who trigger ) : script_( script ),
                                                                   actor_( actor )
   {
      root_->kidsIs( "key" );
      child_ = root_->kidsIs( "child" ).get();
      for ( std::size_t i = 0; i != 3; ++i ) {
         notifiees_[ i ] = std::make_unique< Notifiee >( *this, i );
         attach( i, trigger );
      }
      attach( actor, trigger == parent ? child : parent );
   }

   void attach( std::size_t notifiee, Who who )
   {
      Tree * const entity = reachable( who );
      if ( entity != nullptr && notifiees_[ notifiee ] ) {
         entity->publisher().notifieeIs( notifiees_[ notifiee ].get() );
      }
   }

   void detach( std::size_t notifiee, Who who )
   {
      if ( Tree * const entity = reachable( who ) ) {
         entity->publisher().notifieeDel( notifiees_[ notifiee ].get() );
      }
   }

   void destroy( std::size_t notifiee ) { notifiees_[ notifiee ].reset(); }

   void set( Who who, std::uint32_t depth )
   {
      if ( Tree * const entity = reachable( who ) ) {
         const Notifying notifying( *this, who );
         entity->depthIs( depth );
      }
   }

   void deleteKey( const std::string & key )
   {
      if ( Tree * const entity = reachable( parent ) ) {
         const Notifying notifying( *this, parent );
         entity->kidsDel( key );
      }
   }

   void drop() { root_ = nullptr; }

   std::vector< std::string > heard;

 private:
   class Notifiee : public Corvo::Notifiee {
    public:
      Notifiee( Real & world, std::size_t number ) : world_( world ),
                                                     number_( number ) {}

      void onChange( const Corvo::Change & change ) override
      {
         Real & world = world_;
         const Who who = &change.entity == world.child_ ? child : parent;
         EXPECT_NE( change.entity.refCount(), 0U );
         world.heard.push_back( std::to_string( number_ ) + ' ' + told[ who ] + ' ' +
               ( change.hasKey() ? std::string( change.keyText() ) : "depth" ) );
         if ( number_ == world.actor_ && !world.acted_ ) {
            world.acted_ = true;
            act( world, world.script_, world.actor_, who );
         }
      }

    private:
      Real & world_;
      std::size_t number_;
   };

   // Counts the calls of mutators that an entity runs.
   struct Notifying {
      Notifying( Real & w, Who who ) : count( w.notifying_[ who ] ) { ++count; }
      ~Notifying() { --count; }
      Notifying( const Notifying & ) = delete;
      Notifying & operator=( const Notifying & ) = delete;
      std::size_t & count;
   };

   Tree * reachable( Who who )
   {
      if ( who == parent ) {
         return root_.get();
      }
      return notifying_[ child ] != 0 || ( root_ && root_->kids( "child" ) ) ? child_ : nullptr;
   }

   Script script_;
   std::size_t actor_;
   bool acted_ = false;
   Ptr< Tree > root_ = Tree::TreeIs( "root" );
   Tree * child_ = nullptr;
   std::array< std::size_t, 2 > notifying_{};
   std::array< std::unique_ptr< Notifiee >, 3 > notifiees_;
};

/// Triggers the script, then changes both entities once more. What was heard, exceptions included.
template< class World >
std::vector< std::string > run( const Script & script, std::size_t actor, Who trigger )
{
   World world( script, actor, trigger );
   for ( const auto & [ who, depth ] :
         { std::pair( trigger, 1U ), { parent, 9U }, { child, 9U } } ) {
      try {
         world.set( who, depth );
         world.heard.emplace_back( "done" );
      } catch ( const Refusal & ) {
         world.heard.emplace_back( "refused" );
      }
   }
   return world.heard;
}

TEST( ReentrancyTest, everySequenceOfThreeStepsIsAsTheModelSays )
{
   std::size_t refused = 0;
   for ( std::size_t sequence = 0; sequence != steps * steps * steps; ++sequence ) {
      const Script script = { static_cast< Step >( sequence % steps ),
         static_cast< Step >( sequence / steps % steps ),
         static_cast< Step >( sequence / steps / steps ) };
      for ( const Who trigger : { parent, child } ) {
         for ( std::size_t actor = 0; actor != 3; ++actor ) {
            const auto expected = run< Model >( script, actor, trigger );
            ASSERT_EQ( run< Real >( script, actor, trigger ), expected )
                  << "sequence " << sequence << ", trigger " << trigger << ", actor " << actor;
            refused += static_cast< std::size_t >(
                  std::count( expected.begin(), expected.end(), "refused" ) );
         }
      }
   }
   EXPECT_EQ( Vok::AllocTracker::liveCount( "Test::Tree" ), 0U );
   // Every sequence that holds the throw.
   EXPECT_EQ( refused, ( 9U * 9U * 9U - 8U * 8U * 8U ) * 6U );
}

} // namespace
