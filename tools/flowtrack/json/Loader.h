// A document on its way into a tree: what is done, what has to wait, and what is wrong.
#pragma once

#include "tools/flowtrack/json/Load.h"
#include "tools/flowtrack/json/Read.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace FlowtrackJson {

/// The member of an object, or null.
const Node * memberOf( const Node & object, std::string_view name );

/// See load(), which it is for one document.
class Loader {
 public:
   Loader( const Document & document, How how ) : reading_( document ),
                                                  how_( how )
   {
   }

   void run( const Node & node, Vok::Entity & root );

 private:
   using AttributeData = Vok::AttributeData;
   using Entity = Vok::Entity;
   using Keys = std::set< std::string, std::less<> >;

   /// Attributes that stand outside of the object, and those that are in place already.
   struct Skipped {
      std::set< const AttributeData * > outside = {};
      std::set< const AttributeData * > given = {};
   };

   void entity( const Node & node, Entity & e, const Spot & spot, const Skipped & skipped );
   void attribute( const Node & node, Entity & e, const AttributeData & a, const Spot & spot );
   void value( const Node & node, Entity & e, const AttributeData & a, const Spot & spot );
   void members( const Node & node, Entity & e, const AttributeData & a, const Spot & spot );
   void map( const Node & node, Entity & e, const AttributeData & a, const std::string & key,
         const Spot & spot );
   void set( const Node & node, Entity & e, const AttributeData & a, const Spot & spot );
   void references( const Node & node, Entity & e, const AttributeData & a, const Spot & spot );
   void child( const Node & node, Entity & e, const AttributeData & a, const std::string & key,
         const Spot & spot );
   void makeChild( const Node & node, Entity & e, const AttributeData & a, const std::string & key,
         const Spot & spot );
   std::string argument( const Node & node, const Entity * existing, const AttributeData & a,
         const Vok::TypeData & type, const Spot & spot, Entity & parent );
   void deleteOthers( Entity & e, const AttributeData & a, const Keys & keys );
   void reset( Entity & e, const AttributeData & a );
   Entity * target( const Node & node, Entity & from, std::string_view type, const Spot & spot );

   Reading reading_;
   How how_;
   std::vector< std::function< void() > > later_;
};

} // namespace FlowtrackJson
