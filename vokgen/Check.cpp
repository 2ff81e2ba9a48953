#include "vokgen/Check.h"

namespace VokGen {

void checkModule( Workspace & workspace, ModuleDraft & draft )
{
   const Scopes scopes( workspace, draft );
   Stages::declareTypes( scopes );
   Stages::declareMembers( scopes );
   Stages::declareFunctions( scopes );
   Stages::checkCycles( scopes );
   Stages::evaluate( scopes );
   Stages::checkCollections( scopes );
   Stages::checkRecords( scopes );
   Stages::checkNames( scopes );
   Stages::number( scopes );
}

} // namespace VokGen
