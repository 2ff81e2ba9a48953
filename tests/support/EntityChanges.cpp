// One change after another of each attribute of a table.
#include "tests/support/EntityTable.h"

#include "tests/support/Recorder.h"
#include "tests/support/TypeNamed.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TestSupport {

using Vok::AttributeData;
using Vok::AttributeKind;

namespace {

std::string text( std::string_view view )
{
   return std::string( view );
}

void read( std::string_view from, Vok::Value & into )
{
   Vok::CharRange range( from );
   into.typeData().strepToValue( range, into.data() );
}

/// The two values of a map's row, of a value type. They come from their texts; where the type has
/// none, the first is made of the key alone and the second has one member more.
std::vector< Vok::Value > valuesOf( const AttributeRow & row )
{
   const Vok::TypeData & type = typeNamed( row.form.type );
   Vok::Value first = type.make();
   Vok::Value second = type.make();
   if ( row.more.size() == 2 ) {
      read( row.more[ 0 ].view(), first );
      read( row.more[ 1 ].view(), second );
   } else {
      first = type.make( { row.other } );
      second = first;
      const AttributeData & members = type.attributes().back();
      const Vok::Value member = typeNamed( members.typeName() ).make();
      type.fieldMemberIs( second.data(), members.name(), "1",
            member.typeData().valueToStrep( member.data() ).view() );
   }
   return { first, second };
}

/// Stores the first or the second value of a map's row under its key, and says what its text is.
std::string putMember( Vok::Entity & entity, const AttributeData & attribute,
      const AttributeRow & row, std::size_t which )
{
   if ( !Corvo::ModuleInspectData::findType( row.form.type ) ) {
      attribute.memberIs( entity, row.other, row.more[ which ] );
      return text( row.more[ which ] );
   }
   const Vok::Value value = valuesOf( row )[ which ];
   attribute.memberValueIs( entity, row.other, value );
   return text( value.typeData().valueToStrep( value.data() ) );
}

/// Changes the attribute of one row and says what was heard.
class Changes {
 public:
   Changes( Vok::Entity & entity, const AttributeData & attribute, const AttributeRow & row )
         : entity_( entity ),
           attribute_( attribute ),
           row_( row ),
           recorder_( entity ),
           id_( std::to_string( row.id ) )
   {
   }

   void expect()
   {
      switch ( row_.form.kind ) {
      case AttributeKind::plain:
      case AttributeKind::optional:
         return value();
      case AttributeKind::constructorArgument:
         return row_.form.settable ? value() : refused();
      case AttributeKind::set:
         return set();
      case AttributeKind::map:
         return map();
      case AttributeKind::children:
         return children();
      case AttributeKind::child:
         return child();
      case AttributeKind::constant:
         return refused();
      case AttributeKind::derived:
         return derived();
      case AttributeKind::references:
         return references();
      case AttributeKind::function:
         return;
      }
   }

 private:
   void heard( const std::vector< std::string > & expected )
   {
      EXPECT_EQ( recorder_.take(), expected );
   }

   std::string at( std::string_view key ) const { return id_ + "[" + text( key ) + "]"; }

   void refused()
   {
      EXPECT_THROW( attribute_.set( entity_, row_.preset ), std::invalid_argument );
      EXPECT_EQ( attribute_.get( entity_ ), row_.preset );
   }

   void derived()
   {
      EXPECT_THROW( attribute_.set( entity_, row_.preset ), std::invalid_argument );
      heard( {} );
   }

   void references()
   {
      EXPECT_TRUE( attribute_.keys( entity_ ).empty() );
      EXPECT_EQ( attribute_.child( entity_, row_.other ), nullptr );
      attribute_.memberDel( entity_, row_.other );
      heard( {} );
      EXPECT_THROW( attribute_.childIs( entity_, row_.other ), std::invalid_argument );
   }

   void value()
   {
      attribute_.set( entity_, row_.preset );
      heard( {} );
      if ( row_.other.empty() ) {
         return; // a type of one value
      }
      attribute_.set( entity_, row_.other );
      heard( { id_ + " was " + text( row_.preset ) } );
      EXPECT_EQ( attribute_.get( entity_ ), row_.other );
      attribute_.set( entity_, row_.other );
      heard( {} );
      attribute_.set( entity_, row_.preset );
      heard( { id_ + " was " + text( row_.other ) } );
      EXPECT_EQ( attribute_.get( entity_ ), row_.preset );
      for ( const SetBounds & bounds : row_.bounds ) {
         boundsOf( bounds );
      }
   }

   void boundsOf( const SetBounds & bounds )
   {
      attribute_.set( entity_, std::to_string( bounds.lower ) );
      attribute_.set( entity_, std::to_string( bounds.upper ) );
      recorder_.take();
      if ( bounds.lower != 0 ) {
         beyond( bounds, bounds.lower - 1 );
      }
      if ( row_.form.type != "u32" || bounds.upper != 0xffffffff ) {
         beyond( bounds, bounds.upper + 1 );
      }
      attribute_.set( entity_, row_.preset );
   }

   void beyond( const SetBounds & bounds, std::uint64_t number )
   {
      try {
         attribute_.set( entity_, std::to_string( number ) );
         ADD_FAILURE() << number << " was taken";
      } catch ( const Corvo::RangeException & e ) {
         EXPECT_EQ( std::string( e.what() ), bounds.message );
      }
      EXPECT_EQ( attribute_.get( entity_ ), std::to_string( bounds.upper ) );
      heard( {} );
   }

   void set()
   {
      EXPECT_TRUE( attribute_.keys( entity_ ).empty() );
      attribute_.memberIs( entity_, row_.other, "" );
      heard( { at( row_.other ) } );
      attribute_.memberIs( entity_, row_.other, "" );
      heard( {} );
      EXPECT_EQ( attribute_.keys( entity_ ), std::vector< Corvo::String >{ row_.other } );
      expectDeleted( at( row_.other ) );
   }

   void expectDeleted( const std::string & expected )
   {
      attribute_.memberDel( entity_, row_.other );
      heard( { expected } );
      attribute_.memberDel( entity_, row_.other );
      heard( {} );
      EXPECT_TRUE( attribute_.keys( entity_ ).empty() );
   }

   void map()
   {
      EXPECT_TRUE( attribute_.keys( entity_ ).empty() );
      const std::string first = putMember( entity_, attribute_, row_, 0 );
      heard( { at( row_.other ) } );
      EXPECT_EQ( attribute_.member( entity_, row_.other ), first );
      putMember( entity_, attribute_, row_, 0 );
      heard( {} );
      const std::string second = putMember( entity_, attribute_, row_, 1 );
      heard( { at( row_.other ) + " was " + first } );
      EXPECT_EQ( attribute_.member( entity_, row_.other ), second );
      expectDeleted( at( row_.other ) + " was " + second );
   }

   void children()
   {
      EXPECT_TRUE( attribute_.keys( entity_ ).empty() );
      const auto made = attribute_.childIs( entity_, row_.other, row_.more );
      heard( { at( row_.other ) } );
      EXPECT_EQ( made->parent(), &entity_ );
      EXPECT_EQ( attribute_.childIs( entity_, row_.other, row_.more ), made );
      heard( {} );
      EXPECT_EQ( attribute_.child( entity_, row_.other ), made );
      expectDeleted( at( row_.other ) + " was " + text( made->name() ) );
      EXPECT_EQ( made->parent(), nullptr );
   }

   void child()
   {
      EXPECT_EQ( attribute_.child( entity_, "" ) != nullptr, row_.form.constructed );
      attribute_.memberDel( entity_, "" );
      recorder_.take();
      attribute_.memberDel( entity_, "" );
      heard( {} );
      const auto made = attribute_.childIs( entity_, "", row_.more );
      heard( { id_ } );
      EXPECT_EQ( made->parent(), &entity_ );
      EXPECT_EQ( attribute_.childIs( entity_, "", row_.more ), made );
      heard( {} );
      attribute_.memberDel( entity_, "" );
      heard( { id_ + " was " + text( made->name() ) } );
      EXPECT_EQ( attribute_.child( entity_, "" ), nullptr );
      EXPECT_EQ( made->parent(), nullptr );
   }

   Vok::Entity & entity_;
   const AttributeData & attribute_;
   const AttributeRow & row_;
   Recorder recorder_;
   std::string id_;
};

} // namespace

void setOther( Vok::Entity & entity, const AttributeRow & row )
{
   const AttributeData & attribute = *entity.typeData().attribute( row.name );
   switch ( row.form.kind ) {
   case AttributeKind::set:
      return attribute.memberIs( entity, row.other, "" );
   case AttributeKind::map:
      putMember( entity, attribute, row, 1 );
      return;
   case AttributeKind::children:
   case AttributeKind::child:
      attribute.childIs( entity, row.other, row.more );
      return;
   case AttributeKind::references:
      return;
   default:
      if ( row.form.settable && !row.other.empty() ) {
         attribute.set( entity, row.other );
      }
   }
}

void setAll( Vok::Entity & entity, const EntityTable & table )
{
   for ( const AttributeRow & row : table.attributes ) {
      setOther( entity, row );
   }
}

void expectChanges( Vok::Entity & entity, const AttributeRow & row )
{
   Changes( entity, *entity.typeData().attribute( row.name ), row ).expect();
}

} // namespace TestSupport
