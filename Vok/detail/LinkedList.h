// A list through its own members: joining and leaving take no memory and a fixed time.
#pragma once

#include <cstddef>

namespace Vok::Detail {

/// What a member needs to stand in one list; it has an array of them, `links`.
template< class T > struct ListLink {
   T * before = nullptr;
   T * after = nullptr;
   bool linked = false;
};

/// The members that are linked through `links[ number ]`. Owns none of them; they leave before
/// they end.
template< class T, std::size_t number > class LinkedList {
 public:
   T * first() const noexcept { return first_; }
   T * last() const noexcept { return last_; }
   static T * next( const T & member ) noexcept { return member.links[ number ].after; }

   /// Puts a member in front of all others; silent where it is linked already.
   void push( T & member ) noexcept
   {
      ListLink< T > & link = member.links[ number ];
      if ( link.linked ) {
         return;
      }
      link = { nullptr, first_, true };
      ( first_ ? first_->links[ number ].before : last_ ) = &member;
      first_ = &member;
   }

   /// Takes a member out; silent where it is not linked.
   void remove( T & member ) noexcept
   {
      ListLink< T > & link = member.links[ number ];
      if ( !link.linked ) {
         return;
      }
      ( link.before ? link.before->links[ number ].after : first_ ) = link.after;
      ( link.after ? link.after->links[ number ].before : last_ ) = link.before;
      link = {};
   }

 private:
   T * first_ = nullptr;
   T * last_ = nullptr;
};

} // namespace Vok::Detail
