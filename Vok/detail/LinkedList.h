// A list through its own members: joining and leaving take no memory and a fixed time.
#pragma once

#include <cstddef>

namespace Vok::Detail {

/// What a member needs to stand in one list; it has an array of them, `links`.
template< class T > struct ListLink {
   T * before = nullptr;
   T * after = nullptr;
};

/// The members that are linked through `links[ number ]`. Owns none of them; they leave before
/// they end.
template< class T, std::size_t number > class LinkedList {
 public:
   T * first() const noexcept { return first_; }
   T * last() const noexcept { return last_; }
   static T * next( const T & member ) noexcept { return member.links[ number ].after; }

   /// Puts a member, which is in no other list of that number, in front of all others; silent where
   /// it is linked already.
   void push( T & member ) noexcept
   {
      if ( has( member ) ) {
         return;
      }
      member.links[ number ] = { nullptr, first_ };
      ( first_ ? first_->links[ number ].before : last_ ) = &member;
      first_ = &member;
   }

   /// Takes a member out; silent where it is not linked.
   void remove( T & member ) noexcept
   {
      if ( !has( member ) ) {
         return;
      }
      ListLink< T > & link = member.links[ number ];
      ( link.before ? link.before->links[ number ].after : first_ ) = link.after;
      ( link.after ? link.after->links[ number ].before : last_ ) = link.before;
      link = {};
   }

 private:
   bool has( const T & member ) const noexcept
   {
      return member.links[ number ].before || first_ == &member;
   }

   T * first_ = nullptr;
   T * last_ = nullptr;
};

} // namespace Vok::Detail
