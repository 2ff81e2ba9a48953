// Which addresses a name has: of a host, or of an interface of this switch. Answers may come at
// once, later or never, and change.
#pragma once

#include "Vok/String.h"
#include "Wyre/Ip6Addr.h"
#include "Wyre/IpAddr.h"

#include <functional>
#include <map>
#include <optional>

namespace Derive {

/// What a name stands for: at most one address of each family. Neither means that the name is
/// known to have none.
struct Addresses {
   std::optional< Wyre::IpAddr > ip;
   std::optional< Wyre::Ip6Addr > ip6;

   bool empty() const { return !ip && !ip6; }
   friend bool operator==( const Addresses &, const Addresses & ) = default;
};

/// A table of answers, and who waits for them. What finds answers derives from it; a test fills the
/// table itself. Used from one thread.
class Resolver {
 public:
   /// A name for whose addresses somebody asks, as long as it lives. `told` is called whenever the
   /// answer changes; it takes note, and neither asks nor answers. The resolver lives longer.
   class Question {
    public:
      Question( Resolver & resolver, Corvo::String name, std::function< void() > told );
      Question( const Question & ) = delete;
      Question & operator=( const Question & ) = delete;
      ~Question();

      /// The answer, or none so far.
      std::optional< Addresses > answer() const;

    private:
      friend class Resolver;

      Resolver & resolver_;
      Corvo::String name_;
      std::function< void() > told_;
   };

   Resolver() = default;
   Resolver( const Resolver & ) = delete;
   Resolver & operator=( const Resolver & ) = delete;
   virtual ~Resolver() = default;

   /// Sets the answer for a name, whether or not anybody asks for it.
   void answerIs( const Corvo::String & name, const Addresses & answer );

 protected:
   /// The first question for a name came; the last one went.
   virtual void asked( const Corvo::String & /*name*/ ) {}
   virtual void dropped( const Corvo::String & /*name*/ ) {}

   void forget( const Corvo::String & name ) { answers_.erase( name ); }

 private:
   std::map< Corvo::String, Addresses > answers_;
   std::multimap< Corvo::String, Question * > questions_;
};

} // namespace Derive
