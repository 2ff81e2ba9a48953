// Vok::CharRange, a text that is read from its start.
#pragma once

#include "Vok/Exceptions.h"
#include "Vok/Export.h"
#include "Vok/String.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Vok {

class CharRange;

/// Reads the text of a V; see Vok/Strep.h.
template< class V > void readText( CharRange & range, V & into );

/// The unread rest of a text that it does not own. Reading what does not match throws
/// Corvo::ParseException with the position; what was read before stays consumed, except where a
/// function says otherwise.
///
/// A composite value is read by `needPre( type )`, `desAttrPre( first )`, `desAttrIntra( middle
/// )` for each field in between, and `desAttrPost( last )`; a value of one field by
/// `deserializeAttr( field )`:
///
///     Test::Pair[id=5,text=abc]
///
/// White space (blank, tab, line break) may stand between the tokens of a composite, and nowhere
/// else.
class VOK_EXPORT CharRange {
 public:
   explicit CharRange( std::string_view text ) noexcept : text_( text ) {}

   /// Whether all is consumed.
   bool empty() const noexcept { return at_ == text_.size(); }

   /// How many bytes are consumed.
   std::size_t offset() const noexcept { return at_; }
   std::string_view rest() const noexcept { return text_.substr( at_ ); }

   // Composite values.

   /// The type's full name and the opening bracket. Values nest at most 64 deep.
   void needPre( std::string_view typeName );

   /// A field by its name: the first one, one in between, the last one with the closing bracket;
   /// and, when a type has one field alone, its bare value. A RangeException from the field is
   /// thrown on as a DeserializationException that names the field.
   template< class V > void desAttrPre( std::string_view name, V & into )
   {
      needName( name );
      field( name, into );
   }
   template< class V > void desAttrIntra( std::string_view name, V & into )
   {
      need( ',' );
      needName( name );
      field( name, into );
   }
   template< class V > void desAttrPost( std::string_view name, V & into )
   {
      desAttrIntra( name, into );
      needPost();
   }
   template< class V > void deserializeAttr( std::string_view name, V & into )
   {
      (void)name;
      readText( *this, into );
   }

   /// The closing bracket of a composite.
   void needPost();

   // Tokens. White space before a token is skipped by `need` alone.

   /// The next character other than white space has to be this one.
   void need( char c )
   {
      if ( !accept( c ) ) {
         needBehindSpace( c );
      }
   }

   /// Whether the next character is this one; it is then consumed.
   bool accept( char c ) noexcept
   {
      const bool is = at( c );
      at_ += is ? 1 : 0;
      return is;
   }

   /// Whether the next character is this one; nothing is consumed.
   bool at( char c ) const noexcept { return !empty() && text_[ at_ ] == c; }

   void skipSpace() noexcept;

   /// The longest run of letters, digits and `_`; may be empty.
   std::string_view word() noexcept;

   /// A decimal number without sign and leading zeros, at most `most`.
   std::uint64_t number( std::uint64_t most );

   /// A double as TextOut::putDouble writes it.
   double doubleNumber();

   /// `true` or `false`.
   bool truth();

   /// A text, bare or quoted, in exactly the form that TextOut::putString writes.
   Corvo::String string();

   /// Goes back to a position where reading was before, in the same composite.
   void backTo( std::size_t offset ) noexcept { at_ = offset; }

   /// Throws Corvo::ParseException: what was expected here, and what stands here.
   [[noreturn]] void fail( std::string_view expected ) const;

   /// Throws a ParseException unless all is consumed.
   void needEnd() const;

 private:
   template< class V > void field( std::string_view name, V & into )
   {
      skipSpace();
      try {
         readText( *this, into );
      } catch ( const Corvo::RangeException & e ) {
         rethrow( name, e );
      }
   }
   [[noreturn]] static void rethrow( std::string_view name, const Corvo::RangeException & e );
   void needBehindSpace( char c );
   void needName( std::string_view name );
   Corvo::String quoted();
   Corvo::String quotedWithEscapes();
   char escaped();
   void needCanonical( std::string_view content, std::size_t start );

   static constexpr unsigned deepest = 64;

   std::string_view text_;
   std::size_t at_ = 0;
   unsigned depth_ = 0;
};

} // namespace Vok
