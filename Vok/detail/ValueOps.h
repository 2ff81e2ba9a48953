// The operations of a value type, for code that knows the type only at run time.
#pragma once

#include "Vok/CharRange.h"
#include "Vok/NboAttrLog.h"
#include "Vok/String.h"
#include "Vok/TextOut.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>
#include <typeinfo>

namespace Vok::Detail {

/// One row of functions per value type; `Vok::Detail::valueOps< V >` is the row of V. Addresses
/// given to them are of objects of that type, except that `copy` takes raw memory first.
struct ValueOps {
   const std::type_info * type;
   std::string_view name; ///< full type name, or bool, u8, u16, u32, u64, double, Corvo::String
   std::uint32_t size; ///< in bytes
   std::uint32_t alignment; ///< in bytes
   void ( *construct )( void * raw );
   void ( *copy )( void * raw, const void * from );
   void ( *destroy )( void * value ) noexcept;
   void ( *swap )( void * a, void * b ) noexcept;
   bool ( *equal )( const void * a, const void * b );
   bool ( *less )( const void * a, const void * b ); ///< null where the type has no order
   std::size_t ( *hash )( const void * value ); ///< null where the type has no hash
   void ( *print )( TextOut & out, const void * value );
   void ( *read )(
         CharRange & range, void * into ); ///< null where the type has no text constructor
   void ( *encode )( NboAttrLog::Out & out, const void * value );
   void ( *decode )( NboAttrLog::In & in, void * into );
   void ( *check )( NboAttrLog::In & in ); ///< throws what `decode` would, and keeps nothing
   std::uint32_t fixedLogSize; ///< bytes in a log where every value takes as many, else 0
   bool relocatable; ///< see Relocate.h

   Corvo::String text( const void * value ) const
   {
      TextOut out;
      print( out, value );
      return out.text();
   }
};

/// A value whose type is known by its operations, in storage of its own. That of a small one, which
/// may be moved by copying its bytes, stands in the object itself; its address is another after a
/// move. One that was moved from is only destroyed or assigned to.
class OwnedValue {
 public:
   /// A default value.
   explicit OwnedValue( const ValueOps & ops ) : ops_( &ops )
   {
      build( [ this ]( void * raw ) { ops_->construct( raw ); } );
   }

   /// A copy of `from`.
   OwnedValue( const ValueOps & ops, const void * from ) : ops_( &ops )
   {
      build( [ this, from ]( void * raw ) { ops_->copy( raw, from ); } );
   }

   OwnedValue( const OwnedValue & other ) : OwnedValue( *other.ops_, other.data() ) {}
   OwnedValue( OwnedValue && other ) noexcept
         : ops_( std::exchange( other.ops_, nullptr ) ),
           storage_( other.storage_ )
   {
   }
   OwnedValue & operator=( OwnedValue other ) noexcept
   {
      std::swap( ops_, other.ops_ );
      std::swap( storage_, other.storage_ );
      return *this;
   }
   ~OwnedValue()
   {
      if ( ops_ ) {
         ops_->destroy( data() );
         free();
      }
   }

   const ValueOps & ops() const noexcept { return *ops_; }
   void * data() noexcept { return standsHere() ? storage_.bytes : storage_.memory; }
   const void * data() const noexcept { return const_cast< OwnedValue * >( this )->data(); }

 private:
   union Storage {
      void * memory = nullptr;
      alignas( void * ) std::byte bytes[ 2 * sizeof( void * ) ];
   };

   bool standsHere() const noexcept
   {
      return ops_->size <= sizeof( Storage ) && ops_->alignment <= alignof( Storage ) &&
            ops_->relocatable;
   }
   void free() noexcept
   {
      if ( !standsHere() ) {
         ::operator delete( storage_.memory, std::align_val_t( ops_->alignment ) );
      }
   }
   template< class Build > void build( Build construct )
   {
      if ( !standsHere() ) {
         storage_.memory = ::operator new( ops_->size, std::align_val_t( ops_->alignment ) );
      }
      try {
         construct( data() );
      } catch ( ... ) {
         free();
         throw;
      }
   }

   const ValueOps * ops_;
   Storage storage_;
};

} // namespace Vok::Detail
