// Made by vokgen from Sample.vok. Do not edit.
//
// A text of limited length.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A short text.
class VOK_EXPORT Label {
 public:
   Label() = default;
   /// Throws Corvo::RangeException unless stringValue has at most maxLength (20) bytes.
   explicit Label( Corvo::String stringValue );
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Label( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Label( Log * log )
   {
      vokDecode( *log );
   }

   /// the text
   const Corvo::String & stringValue() const noexcept { return stringValue_; }
   /// most bytes
   static constexpr std::uint32_t maxLength() noexcept { return 20; }

   /// Whether all fields are equal.
   bool isEq( const Label & other ) const;
   friend bool operator==( const Label & a, const Label & b ) { return a.isEq( b ); }
   /// Field by field, in declared order.
   friend bool operator<( const Label & a, const Label & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Label & v )
   {
      return Vok::ValueType< Label >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Label";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static void checkStringValue( const Corvo::String & v )
   {
      if ( v.size() > 20 ) {
         Corvo::RangeException::throwException( "Test::Label::bytes > maxLength() not allowed" );
      }
   }
   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field< Label, Corvo::String >{
                  "stringValue", &Label::stringValue_, &Label::checkStringValue } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   Corvo::String stringValue_;
};

inline bool Label::isEq( const Label & other ) const
{
   return Vok::equalFields( *this, other );
}
inline bool operator<( const Label & a, const Label & b )
{
   return Vok::lessFields( a, b );
}

} // namespace Test

template<> struct std::hash< Test::Label > : Vok::ValueHash< Test::Label > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
