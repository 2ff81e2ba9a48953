// Made by vokgen from Sample.vok. Do not edit.
//
// Collections inside values.
#pragma once

#include "Vok/Generated.h"

static_assert( Vok::generatedVersion == 1, "this file has to be generated anew" );

namespace Test {

// ---- Constants and values -----------------------------------------------------------------------

// Values are copied. Of a field x, x() reads it and xIs( v ) stores it; references that they give
// hold until the field changes. Collections in a value work as those of entities do, and notify
// nobody.

/// A number.
class VOK_EXPORT Id {
 public:
   constexpr Id() noexcept = default;
   /// From its value.
   constexpr explicit Id( std::uint16_t value ) noexcept
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
   constexpr std::uint16_t value() const noexcept { return value_; }
   void valueIs( std::uint16_t v ) noexcept { value_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Id & other ) const;
   friend constexpr bool operator==( const Id & a, const Id & b ) { return a.isEq( b ); }
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

   std::uint16_t value_ = 0;
};

constexpr bool Id::isEq( const Id & other ) const
{
   return Vok::equalFields( *this, other );
}

/// A field of a template.
class VOK_EXPORT Field {
 public:
   constexpr Field() noexcept = default;
   /// From its fields, in declared order.
   constexpr Field( std::uint32_t id, std::uint16_t length ) noexcept
         : id_( id ),
           length_( length )
   {
   }
   /// From its text; throws Corvo::ParseException where that does not match, and what the
   /// constructor from fields throws.
   explicit Field( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Field( Log * log )
   {
      vokDecode( *log );
   }

   /// what it is
   constexpr std::uint32_t id() const noexcept { return id_; }
   void idIs( std::uint32_t v ) noexcept { id_ = v; }
   /// bytes
   constexpr std::uint16_t length() const noexcept { return length_; }
   void lengthIs( std::uint16_t v ) noexcept { length_ = v; }

   /// Whether all fields are equal.
   constexpr bool isEq( const Field & other ) const;
   friend constexpr bool operator==( const Field & a, const Field & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Field & v )
   {
      return Vok::ValueType< Field >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Field";
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "id", &Field::id_ },
            Vok::Field{ "length", &Field::length_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   std::uint32_t id_ = 0;
   std::uint16_t length_ = 4;
};

constexpr bool Field::isEq( const Field & other ) const
{
   return Vok::equalFields( *this, other );
}

/// A value with a constructor argument and a collection.
class VOK_EXPORT Template {
 public:
   using VokField = Vok::MapNode< std::uint32_t, Field, 0 >;

   Template() = default;
   /// With this id, all else at its default.
   explicit Template( Id id );
   /// Ends the process by assertion: there is no text to read it from.
   explicit Template( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Template( Log * log )
   {
      vokDecode( *log );
   }

   /// A value with a constructor argument and a collection.
   const Id & id() const noexcept { return id_; }
   /// the fields by position
   Vok::OrderedView< VokField > field() const noexcept;
   const Field & field( std::uint32_t key ) const;
   /// Another name of field( key ).
   const Field & fieldGet( std::uint32_t key ) const;
   void fieldIs( std::uint32_t key, const Field & value );
   Field fieldDel( std::uint32_t key );
   void fieldDelAll();

   /// Whether all fields are equal.
   bool isEq( const Template & other ) const;
   friend bool operator==( const Template & a, const Template & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Template & v )
   {
      return Vok::ValueType< Template >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Template";
   using VokUntextable = void;
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "id", &Template::id_ },
            Vok::Field{ "field", &Template::field_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );

   Id id_;
   Vok::OrderedMap< VokField, std::uint32_t, Field > field_;
};

inline bool Template::isEq( const Template & other ) const
{
   return Vok::equalFields( *this, other );
}

/// Hashed collections.
class VOK_EXPORT Shelf {
 public:
   using HN_Box = Vok::MapNode< Corvo::String, std::uint32_t, 0x53228ba4 >;
   using HN_Tags = Vok::SetNode< std::uint16_t, 0x3390ac36 >;
   struct PartsKeyFunktor {
      std::uint32_t operator()( const Field & v ) const noexcept;
   };
   using HN_Parts = Vok::KeyedNode< Field, PartsKeyFunktor, 0x8a9cf497 >;

   Shelf() = default;
   /// Ends the process by assertion: there is no text to read it from.
   explicit Shelf( Vok::CharRange & range );
   /// From an attribute log; throws Vok::NboAttrLog::Exception where that is cut short.
   template< std::same_as< Vok::NboAttrLog::In > Log >
   explicit Shelf( Log * log )
   {
      vokDecode( *log );
   }

   /// by name
   Vok::HashView< HN_Box > box() const noexcept;
   std::uint32_t box( std::string_view key ) const;
   void boxIs( const Corvo::String & key, std::uint32_t value );
   template< Corvo::TextBesideString Text >
   void boxIs( const Text & key, std::uint32_t value ) { vokBoxIs( key, value ); }
   std::uint32_t boxDel( std::string_view key );
   void boxDelAll();
   /// tags
   Vok::HashView< HN_Tags > tags() const noexcept;
   bool tags( std::uint16_t key ) const;
   void tagsIs( std::uint16_t key );
   void tagsDel( std::uint16_t key );
   void tagsDelAll();
   /// by a field of the value. Key: id() of the value.
   Vok::HashView< HN_Parts > parts() const noexcept;
   const Field & parts( std::uint32_t key ) const;
   void partsIs( const Field & value );
   Field partsDel( std::uint32_t key );
   void partsDelAll();

   /// Whether all fields are equal.
   bool isEq( const Shelf & other ) const;
   friend bool operator==( const Shelf & a, const Shelf & b ) { return a.isEq( b ); }
   /// The bytes that it takes in an attribute log.
   friend std::size_t attrLogSize( const Shelf & v )
   {
      return Vok::ValueType< Shelf >::logSize( v );
   }

   // For the framework.
   static constexpr std::string_view vokName = "Test::Shelf";
   using VokUntextable = void;
   struct VOK_HIDDEN VokTable;

 private:
   friend struct Vok::Detail::ValueAccess;

   static constexpr auto vokFields()
   {
      return std::tuple(
            Vok::Field{ "box", &Shelf::box_ },
            Vok::Field{ "tags", &Shelf::tags_ },
            Vok::Field{ "parts", &Shelf::parts_ } );
   }
   void vokDecode( Vok::NboAttrLog::In & log );
   void vokBoxIs( std::string_view key, std::uint32_t value );

   Vok::HashMap2018< HN_Box, Corvo::String, std::uint32_t > box_;
   Vok::HashMap2018< HN_Tags, std::uint16_t, std::uint16_t > tags_;
   Vok::HashMap2018< HN_Parts, std::uint32_t, Field > parts_;
};

inline bool Shelf::isEq( const Shelf & other ) const
{
   return Vok::equalFields( *this, other );
}

// ---- Inline members -----------------------------------------------------------------------------

inline Vok::OrderedView< Template::VokField > Template::field() const noexcept
{
   return Vok::OrderedView< VokField >( field_ );
}
inline const Field & Template::field( std::uint32_t key ) const
{
   return Vok::Collection::value( field_, key );
}
inline const Field & Template::fieldGet( std::uint32_t key ) const
{
   return Vok::Collection::value( field_, key );
}

inline Vok::HashView< Shelf::HN_Box > Shelf::box() const noexcept
{
   return Vok::HashView< HN_Box >( box_ );
}
inline std::uint32_t Shelf::box( std::string_view key ) const
{
   return Vok::Collection::value( box_, key );
}
inline Vok::HashView< Shelf::HN_Tags > Shelf::tags() const noexcept
{
   return Vok::HashView< HN_Tags >( tags_ );
}
inline bool Shelf::tags( std::uint16_t key ) const
{
   return Vok::Collection::contains( tags_, key );
}
inline std::uint32_t Shelf::PartsKeyFunktor::operator()( const Field & v ) const noexcept
{
   return v.id();
}
inline Vok::HashView< Shelf::HN_Parts > Shelf::parts() const noexcept
{
   return Vok::HashView< HN_Parts >( parts_ );
}
inline const Field & Shelf::parts( std::uint32_t key ) const
{
   return Vok::Collection::value( parts_, key );
}

} // namespace Test

template<> struct std::hash< Test::Id > : Vok::ValueHash< Test::Id > {
};
template<> struct std::hash< Test::Field > : Vok::ValueHash< Test::Field > {
};

namespace Vok::Modules {

/// The reflection object of module Sample.
VOK_EXPORT const Corvo::ModuleInspectData & Sample() noexcept;

} // namespace Vok::Modules
