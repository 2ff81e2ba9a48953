#include "vokgen/Circles.h"

namespace VokGen {

CircleFinder::CircleFinder( const Scopes & scopes, Message message, Needs needs, Visit visit )
      : scopes_( scopes ),
        message_( message ),
        needs_( std::move( needs ) ),
        visit_( std::move( visit ) )
{
}

void CircleFinder::walk( TypeDraft & from )
{
   if ( !states_.emplace( &from, State() ).second ) {
      return;
   }
   path_.push_back( { &from, needs_( from ), 0 } );
   while ( !path_.empty() ) {
      Step & step = path_.back();
      if ( step.next == step.needs.size() ) {
         TypeDraft & finished = *step.type;
         states_[ &finished ].running = false;
         path_.pop_back();
         visit_( finished );
         continue;
      }
      const Need need = step.needs[ step.next++ ];
      const auto [ state, isNew ] = states_.emplace( need.type, State{ true, path_.size() } );
      if ( isNew ) {
         path_.push_back( { need.type, needs_( *need.type ), 0 } );
      } else if ( state->second.running ) {
         report( need, state->second.index );
      }
   }
}

/// The types on the path from the one needed to the last are a circle. The last ones, up to one
/// that is flawed already, become flawed; what needs a flawed type is for `visit` to say.
void CircleFinder::report( const Need & closing, std::size_t first )
{
   constexpr std::size_t most = 8;
   bool known = false;
   std::string text;
   for ( std::size_t i = first; i < path_.size() && !known; ++i ) {
      known = path_[ i ].type->flawed;
      if ( i - first < most ) {
         text += path_[ i ].type->type->fullName + " -> ";
      } else if ( i - first == most ) {
         text += "... -> ";
      }
   }
   for ( std::size_t i = path_.size(); i-- > first && !path_[ i ].type->flawed; ) {
      path_[ i ].type->flawed = true;
   }
   if ( !known ) {
      scopes_.error( closing.range, message_, { text + closing.type->type->fullName } );
   }
}

} // namespace VokGen
