// Made by vokgen from Sample.vok. Do not edit.
//
// Values of several fields and of one.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// One number.
class VOK_EXPORT Id {
 public:
   constexpr Id() noexcept = default;
   /// From its value.
   constexpr explicit Id( std::uint32_t value ) noexcept
         : value_( value )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Id( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Id( Log * log )
   {
      vokDecode( *log );
   }

   /// the number
   constexpr std::uint32_t value() const noexcept { return value_; }
   void valueIs( std::uint32_t v ) noexcept { value_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Id & other ) const;
   friend constexpr bool operator==( const Id & a, const Id & b ) { return a.isEq( b ); }
   /// Field by field, in declared order.
   friend constexpr bool operator<( const Id & a, const Id & b );
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Id & v ) { return Vok::ValueType< Id >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Id";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "value", &Id::value_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t value_ = 0;
};

constexpr bool Id::isEq( const Id & other ) const
{
   return Vok::equalFields( *this, other );
}
constexpr bool operator<( const Id & a, const Id & b )
{
   return Vok::lessFields( a, b );
}

/// Several fields, one of them a text.
class VOK_EXPORT Pair {
 public:
   Pair() = default;
   /// From its fields, in declared order.
   Pair( Id id, Corvo::String text, bool on, Vok::Seconds at );
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Pair( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Pair( Log * log )
   {
      vokDecode( *log );
   }

   /// a value inside a value
   const Id & id() const noexcept { return id_; }
   void idIs( const Id & v ) noexcept { id_ = v; }
   /// a text
   const Corvo::String & text() const noexcept { return text_; }
   void textIs( const Corvo::String & v ) { text_ = v; }
   /// a truth value
   bool on() const noexcept { return on_; }
   void onIs( bool v ) noexcept { on_ = v; }
   /// a clock time
   const Vok::Seconds & at() const noexcept { return at_; }
   void atIs( const Vok::Seconds & v ) noexcept { at_ = v; }

   /// Whether all fields are equal.
   bool isEq( const Pair & other ) const;
   friend bool operator==( const Pair & a, const Pair & b ) { return a.isEq( b ); }
   /// Whether it differs from the default.
   explicit operator bool() const { return !isEq( Pair() ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Pair & v ) { return Vok::ValueType< Pair >::logSize( v ); }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Pair";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "id", &Pair::id_ },
            Vok::Field{ "text", &Pair::text_ },
            Vok::Field{ "on", &Pair::on_ },
            Vok::Field{ "at", &Pair::at_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   Id id_;
   Corvo::String text_ = Corvo::String( "none" );
   bool on_ = true;
   Vok::Seconds at_ = Vok::Seconds( 0.0 );
};

inline bool Pair::isEq( const Pair & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Without hash and mutators. Its axes have no unit.
class VOK_EXPORT Point {
 public:
   constexpr Point() noexcept = default;
   /// From its fields, in declared order.
   constexpr Point( double x, double y ) noexcept
         : x_( x ),
           y_( y )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Point( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Point( Log * log )
   {
      vokDecode( *log );
   }

   /// to the right
   constexpr double x() const noexcept { return x_; }
   /// upwards
   constexpr double y() const noexcept { return y_; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Point & other ) const;
   friend constexpr bool operator==( const Point & a, const Point & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Point & v )
   {
      return Vok::ValueType< Point >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Point";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "x", &Point::x_ },
            Vok::Field{ "y", &Point::y_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   double x_ = 0.5;
   double y_ = -1.5;
};

constexpr bool Point::isEq( const Point & other ) const
{
   return Vok::equalFields( *this, other );
}

} // namespace Test

template<> struct std::hash< Test::Id > : Vok::ValueHash< Test::Id > {
};
template<> struct std::hash< Test::Pair > : Vok::ValueHash< Test::Pair > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
