// What instantiating a child takes and does.
#include "vokgen/emit/attribute/ChildArguments.h"

namespace VokGen {

using Model::Attribute;
using Model::ChildArgument;
using Model::Reinstantiation;

namespace {

/// The names of the arguments under a rule: "seqno", "seqno or mode", "a, b or c".
std::string argumentsUnder( Reinstantiation rule, const Attribute & children )
{
   std::vector< std::string > named;
   for ( const ChildArgument & argument : children.collection->arguments ) {
      if ( argument.rule == rule ) {
         named.push_back( argument.argument->name );
      }
   }
   std::string out;
   for ( std::size_t i = 0; i != named.size(); ++i ) {
      const bool last = i + 1 == named.size();
      out += ( i == 0 ? "" : last ? " or "
                                  : ", " ) +
            named[ i ];
   }
   return out;
}

void append(
      std::string & sentence, const std::string & arguments, const std::string & consequence )
{
   if ( !arguments.empty() ) {
      sentence += ( sentence.empty() ? "Where the child exists, another " : ", another " ) +
            arguments + " " + consequence;
   }
}

} // namespace

std::vector< const Attribute * > childArguments( const Attribute & children )
{
   std::vector< const Attribute * > out;
   for ( const ChildArgument & argument : children.collection->arguments ) {
      out.push_back( argument.argument );
   }
   return out;
}

std::string reinstantiationInWords( const Attribute & children )
{
   std::string sentence;
   append( sentence, argumentsUnder( Reinstantiation::refuse, children ),
         "throws Corvo::ReinstantiationException" );
   append( sentence, argumentsUnder( Reinstantiation::update, children ), "is set" );
   append( sentence, argumentsUnder( Reinstantiation::replace, children ), "replaces it" );
   return sentence.empty() ? "" : sentence + ".";
}

} // namespace VokGen
