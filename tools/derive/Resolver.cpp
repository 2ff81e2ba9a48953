// The table of answers.
#include "tools/derive/Resolver.h"

#include <utility>

namespace Derive {

Resolver::Question::Question(
      Resolver & resolver, Corvo::String name, std::function< void() > told )
      : resolver_( resolver ),
        name_( std::move( name ) ),
        told_( std::move( told ) )
{
   const bool first = !resolver_.questions_.contains( name_ );
   resolver_.questions_.emplace( name_, this );
   if ( first ) {
      resolver_.asked( name_ );
   }
}

Resolver::Question::~Question()
{
   auto [ at, end ] = resolver_.questions_.equal_range( name_ );
   while ( at != end && at->second != this ) {
      ++at;
   }
   resolver_.questions_.erase( at );
   if ( !resolver_.questions_.contains( name_ ) ) {
      resolver_.dropped( name_ );
   }
}

std::optional< Addresses > Resolver::Question::answer() const
{
   const auto found = resolver_.answers_.find( name_ );
   return found == resolver_.answers_.end() ? std::optional< Addresses >() : found->second;
}

void Resolver::answerIs( const Corvo::String & name, const Addresses & answer )
{
   const auto [ at, fresh ] = answers_.try_emplace( name, answer );
   if ( !fresh && at->second == answer ) {
      return;
   }
   at->second = answer;
   const auto [ from, to ] = questions_.equal_range( name );
   for ( auto question = from; question != to; ++question ) {
      question->second->told_();
   }
}

} // namespace Derive
