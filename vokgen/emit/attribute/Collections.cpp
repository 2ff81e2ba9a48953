// Nodes, views and lookups of collections.
#include "vokgen/emit/attribute/Collections.h"

#include "vokgen/Names.h"
#include "vokgen/Printer.h"
#include "vokgen/emit/Cells.h"
#include "vokgen/emit/Functions.h"
#include "vokgen/emit/Spelling.h"

namespace VokGen {

using Model::Attribute;
using Model::AttributeKind;
using Model::KeyOrigin;

namespace {

std::string nodeName( const Attribute & collection )
{
   return collection.collection->ordered ? Names::orderedNode( collection.name )
                                         : Names::hashNode( collection.name );
}

bool holdsEntities( const Attribute & collection )
{
   return collection.kind == AttributeKind::children ||
         collection.kind == AttributeKind::references;
}

/// What the key functor reads the key out of.
std::string keyHolder( const Attribute & collection )
{
   return Scope( *collection.owner ).type( collection.type );
}

/// The constant that is mixed into the seed of the hash; an ordered collection hashes nothing.
std::string salt( const Attribute & collection )
{
   const std::string digits = Names::hexadecimal( collection.collection->hashSalt );
   return collection.collection->ordered ? "0" : "0x" + digits.substr( digits.size() - 8 );
}

/// The node template with its arguments but the salt.
std::string nodeArguments( const Attribute & collection )
{
   const Scope scope( *collection.owner );
   const std::string key = scope.type( collection.collection->key );
   const std::string member = scope.type( collection.type );
   const std::string functor = Names::keyFunctor( collection.name );
   switch ( collection.kind ) {
   case AttributeKind::set:
      return "SetNode< " + key;
   case AttributeKind::children:
      return "ChildNode< " + member + ", " + functor;
   case AttributeKind::references:
      return "ChildNode< const " + member + ", " + functor;
   default:
      return collection.collection->origin == KeyOrigin::member
            ? "KeyedNode< " + member + ", " + functor
            : "MapNode< " + key + ", " + member;
   }
}

std::string viewType( const Attribute & collection, const std::string & qualifier )
{
   const std::string view =
         collection.collection->ordered ? "Vok::OrderedView< " : "Vok::HashView< ";
   return view + qualifier + nodeName( collection ) + " >";
}

} // namespace

std::string memberType( const Attribute & collection )
{
   const Scope scope( *collection.owner );
   switch ( collection.kind ) {
   case AttributeKind::children:
   case AttributeKind::child:
      return scope.pointer( *collection.type.entity );
   case AttributeKind::references:
      return scope.constPointer( *collection.type.entity );
   default:
      return scope.type( collection.type );
   }
}

std::string nodeDeclaration( const Attribute & collection )
{
   std::string node = "using " + nodeName( collection ) + " = Vok::" +
         nodeArguments( collection ) + ", " + salt( collection ) + " >;\n";
   if ( collection.collection->origin != KeyOrigin::member ) {
      return node;
   }
   return fill( { { "functor", Names::keyFunctor( collection.name ) },
                      { "key", Scope( *collection.owner ).given( collection.collection->key ) },
                      { "holder", keyHolder( collection ) } },
                R"(
      struct $functor$ {
         $key$ operator()( const $holder$ & v ) const noexcept;
      };
   )" ) + node;
}

std::string keyFunctorDefinition( const Attribute & collection )
{
   if ( collection.collection->origin != KeyOrigin::member ) {
      return "";
   }
   const std::string head = "inline " +
         Scope( *collection.owner ).given( collection.collection->key ) + " " +
         collection.owner->name + "::" + Names::keyFunctor( collection.name ) +
         "::operator()( const " + keyHolder( collection ) + " & v ) const noexcept";
   return shortFunction( head, "return v." + collection.collection->keyAttribute->name + "();" );
}

std::string collectionMember( const Attribute & collection )
{
   const Scope scope( *collection.owner );
   const std::string map =
         collection.collection->ordered ? "Vok::OrderedMap< " : "Vok::HashMap2018< ";
   return dataMember( map + nodeName( collection ) + ", " +
               scope.type( collection.collection->key ) + ", " + memberType( collection ) + " >",
         Names::dataMember( collection.name ) );
}

// ---- Functions --------------------------------------------------------------------------------

CollectionWriter::CollectionWriter( const Attribute & collection )
      : collection_( collection ),
        qualifier_( collection.owner->name + "::" )
{
   if ( collection.kind == AttributeKind::child ) {
      out_.data = dataMember( memberType( collection ), Names::dataMember( collection.name ) );
   } else {
      out_.nodes = nodeDeclaration( collection );
      out_.data = collectionMember( collection );
      out_.inlines = keyFunctorDefinition( collection );
   }
}

std::string CollectionWriter::head( const CollectionFunction & function, bool inDefinition ) const
{
   return function.result + " " + ( inDefinition ? qualifier_ : "" ) + function.name +
         inParentheses( function.parameters ) + function.suffix;
}

void CollectionWriter::declare( const CollectionFunction & function )
{
   out_.members += head( function, false ) + ";\n";
}

void CollectionWriter::accessors( const std::string & result, const std::string & lookup )
{
   const std::string view = viewType( collection_, "" );
   CollectionFunction whole{ view, collection_.name, "", " const noexcept",
      "return " + view + "( " + Names::dataMember( collection_.name ) + " );" };
   declare( whole );
   whole.result = viewType( collection_, qualifier_ );
   out_.inlines += shortFunction( "inline " + head( whole, true ), whole.statement );
   accessor( collection_.name, result, lookup );
}

void CollectionWriter::accessor( const std::string & name, const std::string & result,
      const std::string & lookup )
{
   const CollectionFunction function{ result, name,
      Scope( *collection_.owner ).query( collection_.collection->key ) + " key", " const",
      "return Vok::Collection::" + lookup + "( " + Names::dataMember( collection_.name ) +
            ", key );" };
   declare( function );
   out_.inlines += shortFunction( "inline " + head( function, true ), function.statement );
}

void CollectionWriter::define( const CollectionFunction & function )
{
   out_.definitions += ( out_.definitions.empty() ? "" : "\n" ) +
         longFunction( head( function, true ), function.statement );
}

std::string CollectionWriter::statement(
      const std::string & result, const CollectionCall & call ) const
{
   const bool inValue = Model::asValue( collection_.owner );
   const std::string place = inValue ? "Vok::Collection::" + call.function + "( "
                                     : "Vok::Attribute::" + call.function + "( *this, " +
               Names::attributeId( collection_.name ) + ", ";
   const std::string arguments = ( call.before.empty() ? "" : call.before + ", " ) +
         Names::dataMember( collection_.name ) + ( call.behind.empty() ? "" : ", " + call.behind );
   const std::string back = result == "void" ? "" : "return ";
   return back + place + arguments + " );";
}

void CollectionWriter::mutator( const std::string & name, const std::string & result,
      const std::string & parameters, const CollectionCall & call )
{
   const CollectionFunction function{ result, name, parameters, "", statement( result, call ) };
   declare( function );
   define( function );
}

void CollectionWriter::storer( const std::string & function, const std::string & value )
{
   const Scope scope( *collection_.owner );
   const Model::Type & key = collection_.collection->key;
   const std::string name = Names::mutator( collection_.name );
   const std::string rest = value.empty() ? "" : ", " + value;
   const std::string arguments = value.empty() ? "key" : "key, value";
   mutator( name, "void", scope.given( key ) + " key" + rest, { function, "", arguments } );
   if ( !key.isText() ) {
      return;
   }
   const CollectionFunction byText{ "void", Names::mutatorByText( collection_.name ),
      scope.query( key ) + " key" + rest, "", statement( "void", { function, "", arguments } ) };
   out_.members += "template< Corvo::TextBesideString Text >\n" +
         shortFunction( "void " + name + "( const Text & key" + rest + " )",
               byText.name + "( " + arguments + " );", 3 );
   out_.functions += head( byText, false ) + ";\n";
   define( byText );
}

Fragments CollectionWriter::finish()
{
   return std::move( out_ );
}

// ---- Reflection and reference -----------------------------------------------------------------

void fillCollectionRow( const Attribute & collection, const std::string & operations, Row & row )
{
   const Model::Collection & facts = *collection.collection;
   row.ordered = facts.ordered;
   row.settable = true;
   row.typeName = collection.type.fullName;
   row.keyTypeName = facts.key.fullName;
   row.keyField = facts.keyAttribute ? facts.keyAttribute->name : "";
   row.offset = offsetOf( collection );
   row.key = valueOps( facts.key.cppName );
   if ( !holdsEntities( collection ) ) {
      row.value = valueOps( collection.type.cppName );
   }
   row.collection = "&Vok::Detail::" + operations + "< decltype( " + collection.owner->name +
         "::" + Names::dataMember( collection.name ) + " ) >";
}

std::string keyNote( const Attribute & collection )
{
   return "by " + code( collection.collection->keyAttribute->name );
}

std::string orderNote( const Attribute & collection )
{
   return collection.collection->ordered ? "ordered " : "";
}

} // namespace VokGen
