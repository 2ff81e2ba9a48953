// Corvo::String: an immutable text of any bytes, 16 bytes big, whose copies cost no allocation.
#pragma once

#include "Vok/Export.h"
#include "Vok/detail/Bytes.h"
#include "Vok/detail/Threads.h"

#include <atomic>
#include <bit>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace Corvo {

class String;

/// What stands for a String where none is made: literals, std::string, std::string_view.
template< class Text >
concept TextBesideString =
      std::convertible_to< const Text &, std::string_view > && !std::same_as< Text, String > &&
      !std::same_as< Text, std::nullptr_t >;

/// An immutable byte string; a new text is a new String. It may hold any bytes, NUL included, and
/// is compared and ordered byte by byte as unsigned bytes.
///
/// Up to 15 bytes stand in the object itself. A longer text stands in one heap block that all
/// copies share and the last of them frees; copies may live in several threads. Copying, moving and
/// swapping never throw and cost a few instructions; a moved-from String is empty. Building one
/// from a text throws std::bad_alloc when memory runs out, and std::length_error above maxSize().
///
/// data(), c_str(), view() and references into them hold until this String is assigned to, moved
/// from or destroyed.
class VOK_EXPORT String {
 public:
   /// The empty text.
   constexpr String() noexcept : word_{ 0, packed( 0, inPlace ) } {}
   /// The text up to the first NUL; `text` is not null.
   String( const char * text ) : String( std::string_view( text ) ) {}
   /// All bytes of `text`.
   String( std::string_view text ) : String()
   {
      if ( text.size() <= inPlace ) {
         if constexpr ( littleEndian ) {
            const auto words = Vok::Detail::shortWords( text.data(), text.size() );
            word_[ 0 ] = words.first;
            word_[ 1 ] = words.second | packed( 0, inPlace - text.size() );
         } else {
            Vok::Detail::copyShort( bytes(), text.data(), text.size() );
            bytes()[ inPlace ] = static_cast< char >( inPlace - text.size() );
         }
      } else {
         share( text );
      }
   }
   String( const std::string & text ) : String( std::string_view( text ) ) {}
   String( std::nullptr_t ) = delete;

   String( const String & other ) noexcept : word_{ other.word_[ 0 ], other.word_[ 1 ] }
   {
      if ( isShared() ) {
         Vok::Detail::incrementCount( block()->count );
      }
   }
   String( String && other ) noexcept : word_{ other.word_[ 0 ], other.word_[ 1 ] }
   {
      other.word_[ 0 ] = 0;
      other.word_[ 1 ] = packed( 0, inPlace );
   }
   String & operator=( const String & other ) noexcept
   {
      String( other ).swap( *this );
      return *this;
   }
   String & operator=( String && other ) noexcept
   {
      String( std::move( other ) ).swap( *this );
      return *this;
   }
   ~String()
   {
      if ( isShared() ) {
         release();
      }
   }

   void swap( String & other ) noexcept
   {
      std::swap( word_[ 0 ], other.word_[ 0 ] );
      std::swap( word_[ 1 ], other.word_[ 1 ] );
   }
   friend void swap( String & a, String & b ) noexcept { a.swap( b ); }

   std::size_t size() const noexcept
   {
      const std::size_t unused = tag();
      return unused <= inPlace ? inPlace - unused : sharedSize();
   }
   bool empty() const noexcept { return word_[ 1 ] == packed( 0, inPlace ); }
   /// The bytes, followed by a NUL.
   const char * data() const noexcept { return isShared() ? sharedBytes() : bytes(); }
   const char * c_str() const noexcept { return data(); }
   std::string_view view() const noexcept
   {
      return isShared() ? std::string_view( sharedBytes(), sharedSize() )
                        : std::string_view( bytes(), inPlace - tag() );
   }
   operator std::string_view() const noexcept { return view(); }
   explicit operator std::string() const { return std::string( view() ); }

   /// The longest text that a String can hold.
   static constexpr std::size_t maxSize() noexcept { return ( std::size_t{ 1 } << 48 ) - 1; }

   friend bool operator==( const String & a, const String & b ) noexcept
   {
      // The second words hold the lengths; in place they hold the last bytes as well.
      if ( a.word_[ 1 ] != b.word_[ 1 ] ) {
         return false;
      }
      return a.word_[ 0 ] == b.word_[ 0 ] || ( a.isShared() && sharedEqual( a, b ) );
   }
   template< TextBesideString Text >
   friend bool operator==( const String & a, const Text & b ) noexcept
   {
      const std::string_view left = a;
      const std::string_view right = b;
      return left.size() == right.size() &&
            Vok::Detail::equalBytes( left.data(), right.data(), left.size() );
   }
   friend std::strong_ordering operator<=>( const String & a, const String & b ) noexcept
   {
      return Vok::Detail::compareTexts( a.view(), b.view() );
   }
   template< TextBesideString Text >
   friend std::strong_ordering operator<=>( const String & a, const Text & b ) noexcept
   {
      return Vok::Detail::compareTexts( a.view(), std::string_view( b ) );
   }

 private:
   /// Sixteen bytes in two words. The last byte is the tag. In place it holds how many of the 15
   /// bytes before it are unused, so that it is the NUL behind a text of 15, and the unused ones
   /// are zero, so that equal texts are equal words. Of a shared text, the first word is the
   /// block's address and the second its size beside the tag.
   static constexpr std::size_t inPlace = 15;
   static constexpr std::size_t sharedTag = 255;

   /// What stands before the bytes of a shared text.
   struct Block {
      std::atomic< std::uint32_t > count; // 2^32 references would fill 64 GiB
   };

   static constexpr bool littleEndian = std::endian::native == std::endian::little;

   static constexpr std::uint64_t packed( std::size_t size, std::size_t tag ) noexcept
   {
      return littleEndian ? std::uint64_t{ size } | ( std::uint64_t{ tag } << 56 )
                          : ( std::uint64_t{ size } << 8 ) | tag;
   }
   std::size_t tag() const noexcept
   {
      return static_cast< std::size_t >( littleEndian ? word_[ 1 ] >> 56 : word_[ 1 ] & 255 );
   }
   bool isShared() const noexcept { return tag() > inPlace; }
   std::size_t sharedSize() const noexcept
   {
      return static_cast< std::size_t >( littleEndian ? word_[ 1 ] & maxSize() : word_[ 1 ] >> 8 );
   }
   Block * block() const noexcept
   {
      return reinterpret_cast< Block * >( static_cast< std::uintptr_t >( word_[ 0 ] ) );
   }
   const char * sharedBytes() const noexcept
   {
      return reinterpret_cast< const char * >( block() + 1 );
   }
   char * bytes() noexcept { return reinterpret_cast< char * >( word_ ); }
   const char * bytes() const noexcept { return reinterpret_cast< const char * >( word_ ); }

   void share( std::string_view text );
   void release() noexcept;
   static bool sharedEqual( const String & a, const String & b ) noexcept;

   std::uint64_t word_[ 2 ];
};

static_assert( sizeof( String ) == 16 );

VOK_EXPORT std::ostream & operator<<( std::ostream & out, const String & text );

} // namespace Corvo

/// Agrees with the hash of the std::string_view, and takes one (or a literal) in its stead.
template<> struct std::hash< Corvo::String > {
   using is_transparent = void;
   std::size_t operator()( std::string_view text ) const noexcept
   {
      return std::hash< std::string_view >()( text );
   }
};
