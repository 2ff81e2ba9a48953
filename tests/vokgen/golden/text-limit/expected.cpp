// Made by vokgen from Sample.vok. Do not edit.
#include "Sample.h"

namespace Test {

// ---- Label --------------------------------------------------------------------------------------

Label::Label( Corvo::String stringValue )
      : stringValue_( std::move( stringValue ) )
{
   checkStringValue( stringValue_ );
}

Label::Label( Vok::CharRange & range )
{
   Vok::readFields( range, *this );
}

void Label::vokDecode( Vok::NboAttrLog::In & log )
{
   Vok::decodeFields( log, *this );
}

} // namespace Test
